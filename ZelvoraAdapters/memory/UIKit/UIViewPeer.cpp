#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"

#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraAdapters/memory/UIKit/anchorText.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

namespace {

std::string flag(char const* call, bool value)
{
    return std::string(call) + (value ? " true" : " false");
}

std::string constraintText(char const* call, platform::NSLayoutConstraint const& constraint)
{
    return std::string(call) + ' ' + anchorText(constraint.firstAnchor()) + " = "
        + anchorText(constraint.secondAnchor());
}

}

UIViewPeer::UIViewPeer(Screen& screen, platform::UIView& owner, platform::CGRect frame)
    : m_screen(screen)
    , m_owner(owner)
    , m_ownFrame(frame)
    , m_frame(frame)
{
    m_screen.add(*this);
}

UIViewPeer::~UIViewPeer()
{
    m_screen.remove(*this);
    m_screen.calls().forget(&m_owner);
}

void UIViewPeer::addSubview(platform::UIView&)
{
    record("addSubview");
}

void UIViewPeer::removeSubview(platform::UIView&)
{
    record("removeSubview");
}

void UIViewPeer::bringSubviewToFront(platform::UIView&)
{
    record("bringSubviewToFront");
}

void UIViewPeer::setHidden(bool hidden)
{
    record(flag("setHidden", hidden));
}

void UIViewPeer::setBackgroundColor(platform::UIColor color)
{
    m_backgroundColor = color;
    record("setBackgroundColor");
}

void UIViewPeer::setTranslatesAutoresizingMaskIntoConstraints(bool translates)
{
    m_translates = translates;
    record(flag("setTranslatesAutoresizingMaskIntoConstraints", translates));
}

void UIViewPeer::activate(platform::NSLayoutConstraint const& constraint)
{
    record(constraintText("activate", constraint));
}

void UIViewPeer::deactivate(platform::NSLayoutConstraint const& constraint)
{
    record(constraintText("deactivate", constraint));
}

void UIViewPeer::layoutIfNeeded()
{
    record("layoutIfNeeded");
    m_screen.layoutTreeAround(m_owner);
}

void UIViewPeer::addGestureRecognizer(platform::UIGestureRecognizer&)
{
    record("addGestureRecognizer");
}

void UIViewPeer::record(std::string call)
{
    m_screen.calls().add(&m_owner, std::move(call));
}

UIViewPeer& peer(platform::UIView const& view)
{
    auto* found = dynamic_cast<UIViewPeer*>(&view.peer());
    if (!found)
        platform::fatalError("a view of another adapter was used with the one in memory");
    return *found;
}

platform::CGRect frame(platform::UIView const& view)
{
    return peer(view).frame();
}

}
