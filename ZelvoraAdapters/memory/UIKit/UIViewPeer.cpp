#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"

#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraAdapters/shared/Layout/LayoutSolver.h"
#include "ZelvoraAdapters/shared/Layout/anchorText.h"
#include "ZelvoraAdapters/shared/Layout/rootOf.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

using platform::CGRect;
using platform::UIView;

namespace {

std::string flag(char const* call, bool value)
{
    return std::string(call) + (value ? " true" : " false");
}

std::string constraintText(char const* call, platform::NSLayoutConstraint const& constraint)
{
    return std::string(call) + ' ' + shared::anchorText(constraint.firstAnchor()) + " = "
        + shared::anchorText(constraint.secondAnchor());
}

}

class UIViewPeer::Metrics final : public shared::LayoutMetrics {
public:
    // shared::LayoutMetrics
    [[nodiscard]] std::optional<CGRect> fixedFrame(UIView const& view) const override
    {
        auto const& viewPeer = of(view);
        return viewPeer.m_translates ? std::optional(viewPeer.m_ownFrame) : std::nullopt;
    }
    [[nodiscard]] std::optional<double> intrinsicWidth(UIView const& view) const override
    {
        return of(view).m_intrinsicSize.width;
    }
    [[nodiscard]] std::optional<double> intrinsicHeight(UIView const& view, double) const override
    {
        return of(view).m_intrinsicSize.height;
    }
};

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

UIViewPeer& UIViewPeer::of(UIView const& view)
{
    auto* found = dynamic_cast<UIViewPeer*>(&view.peer());
    if (!found)
        platform::fatalError("a view of another adapter was used with the one in memory");
    return *found;
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
    of(shared::rootOf(m_owner)).layOutTree();
}

void UIViewPeer::addGestureRecognizer(platform::UIGestureRecognizer&)
{
    record("addGestureRecognizer");
}

void UIViewPeer::layOutTree()
{
    m_screen.didLayOut();
    auto space = m_fillsScreen ? shared::LayoutSpace { m_screen.bounds(), m_screen.safeAreaInsets() }
                               : shared::LayoutSpace { m_ownFrame };
    auto layout = shared::solveLayout(m_owner, space, Metrics());
    for (auto const& [view, frame] : layout.frames) {
        auto& placed = of(*view);
        m_screen.didPlace(*view, placed.m_frame, frame);
        placed.m_frame = frame;
        // What a view reported as the root of a former tree is out of date.
        placed.m_ambiguities.clear();
    }
    // Nobody has placed a view that is in no other, on no screen and without a frame: it cannot lack anything yet.
    if (!m_fillsScreen && m_ownFrame == CGRect {})
        return;
    for (auto& [kind, sentence] : layout.ambiguities)
        m_ambiguities.push_back(std::move(sentence));
}

void UIViewPeer::record(std::string call)
{
    m_screen.calls().add(&m_owner, std::move(call));
}

UIViewPeer& peer(UIView const& view)
{
    return UIViewPeer::of(view);
}

platform::CGRect frame(platform::UIView const& view)
{
    return UIViewPeer::of(view).frame();
}

}
