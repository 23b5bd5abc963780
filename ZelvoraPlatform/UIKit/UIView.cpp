#include "ZelvoraPlatform/UIKit/UIView.h"

#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/fatalError.h"

#include <algorithm>
#include <utility>

namespace zelvora::platform {

UIView::UIView(CGRect frame, std::optional<std::string_view> nativeClass)
    : m_peer(Platform::current().makeViewPeer(*this, frame, nativeClass))
{
}

UIView::UIView(std::unique_ptr<Peer> peer) : m_peer(std::move(peer)) { }

UIView::~UIView()
{
    // A view that is being destroyed is in no superview, which would own it.
    for (auto const& constraint : m_constraints)
        m_peer->deactivate(constraint);
    for (auto const& child : m_subviews) {
        m_peer->removeSubview(*child);
        child->m_superview = nullptr;
    }
}

CGRect UIView::bounds() const
{
    return m_peer->bounds();
}

void UIView::addSubview(std::shared_ptr<UIView> child)
{
    if (child->contains(*this))
        fatalError("a view was added to itself or to a view in it");
    child->removeFromSuperview();
    child->m_superview = this;
    m_subviews.push_back(std::move(child));
    m_peer->addSubview(*m_subviews.back());
}

void UIView::removeFromSuperview()
{
    if (!m_superview)
        return;
    auto& superview = *m_superview;
    for (auto* ancestor = m_superview; ancestor; ancestor = ancestor->m_superview)
        ancestor->deactivateConstraintsNaming(*this);
    superview.m_peer->removeSubview(*this);
    m_superview = nullptr;
    // Last, because the superview may own the only reference.
    std::erase_if(superview.m_subviews, [this](auto const& subview) { return subview.get() == this; });
}

void UIView::bringSubviewToFront(UIView& child)
{
    auto const isChild = [&child](auto const& subview) { return subview.get() == &child; };
    auto const found = std::ranges::find_if(m_subviews, isChild);
    if (found == m_subviews.end())
        return;
    std::rotate(found, found + 1, m_subviews.end());
    m_peer->bringSubviewToFront(child);
}

void UIView::setHidden(bool hidden)
{
    m_hidden = hidden;
    m_peer->setHidden(hidden);
}

void UIView::setBackgroundColor(UIColor color)
{
    m_peer->setBackgroundColor(color);
}

void UIView::setTranslatesAutoresizingMaskIntoConstraints(bool translates)
{
    m_peer->setTranslatesAutoresizingMaskIntoConstraints(translates);
}

void UIView::addGestureRecognizer(std::shared_ptr<UIGestureRecognizer> const& recognizer)
{
    m_gestureRecognizers.push_back(recognizer);
    m_peer->addGestureRecognizer(*recognizer);
}

void UIView::layoutIfNeeded()
{
    m_peer->layoutIfNeeded();
}

void UIView::animate(TimeInterval duration, std::function<void()> const& animations)
{
    Platform::current().animate(duration, animations);
}

bool UIView::contains(UIView const& other) const
{
    auto const* view = &other;
    while (view && view != this)
        view = view->m_superview;
    return view == this;
}

void UIView::activate(NSLayoutConstraint const& constraint)
{
    if (std::ranges::find(m_constraints, constraint) != m_constraints.end())
        return;
    m_constraints.push_back(constraint);
    m_peer->activate(constraint);
}

void UIView::deactivate(NSLayoutConstraint const& constraint)
{
    if (std::erase(m_constraints, constraint))
        m_peer->deactivate(constraint);
}

void UIView::deactivateConstraintsNaming(UIView const& leaving)
{
    auto const constraints = m_constraints;
    for (auto const& constraint : constraints) {
        if (leaving.contains(*constraint.firstAnchor().view) || leaving.contains(*constraint.secondAnchor().view))
            deactivate(constraint);
    }
}

}
