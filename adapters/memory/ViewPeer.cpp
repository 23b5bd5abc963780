#include "adapters/memory/ViewPeer.h"

#include "adapters/memory/Screen.h"
#include "adapters/memory/anchorText.h"
#include "platform/fatalError.h"

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

ViewPeer::ViewPeer(Screen& screen, platform::UIView& owner, platform::CGRect frame)
    : m_screen(screen)
    , m_owner(owner)
    , m_ownFrame(frame)
    , m_frame(frame)
{
    m_screen.add(*this);
}

ViewPeer::~ViewPeer()
{
    m_screen.remove(*this);
    m_screen.calls().forget(&m_owner);
}

void ViewPeer::addSubview(platform::UIView&)
{
    record("addSubview");
}

void ViewPeer::removeSubview(platform::UIView&)
{
    record("removeSubview");
}

void ViewPeer::bringSubviewToFront(platform::UIView&)
{
    record("bringSubviewToFront");
}

void ViewPeer::setHidden(bool hidden)
{
    record(flag("setHidden", hidden));
}

void ViewPeer::setBackgroundColor(platform::UIColor color)
{
    m_backgroundColor = color;
    record("setBackgroundColor");
}

void ViewPeer::setTranslatesAutoresizingMaskIntoConstraints(bool translates)
{
    m_translates = translates;
    record(flag("setTranslatesAutoresizingMaskIntoConstraints", translates));
}

void ViewPeer::activate(platform::NSLayoutConstraint const& constraint)
{
    record(constraintText("activate", constraint));
}

void ViewPeer::deactivate(platform::NSLayoutConstraint const& constraint)
{
    record(constraintText("deactivate", constraint));
}

void ViewPeer::layoutIfNeeded()
{
    record("layoutIfNeeded");
    m_screen.layoutTreeAround(m_owner);
}

void ViewPeer::addGestureRecognizer(platform::UIGestureRecognizer&)
{
    record("addGestureRecognizer");
}

void ViewPeer::record(std::string call)
{
    m_screen.calls().add(&m_owner, std::move(call));
}

ViewPeer& peer(platform::UIView const& view)
{
    auto* found = dynamic_cast<ViewPeer*>(&view.peer());
    if (!found)
        platform::fatalError("a view of another adapter was used with the one in memory");
    return *found;
}

platform::CGRect frame(platform::UIView const& view)
{
    return peer(view).frame();
}

}
