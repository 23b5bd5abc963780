#include "ZelvoraAdapters/uikit/UIKit/UIViewPeer.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraAdapters/uikit/UIKit/Gestures.h"
#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"

namespace zelvora::uikit {

namespace {

// Reset when it is taken.
UIView* s_adopted = nil;

NSLayoutAnchor* edgeOf(id item, platform::NSLayoutAttribute attribute)
{
    switch (attribute) {
    case platform::NSLayoutAttribute::Top:
        return [item topAnchor];
    case platform::NSLayoutAttribute::Leading:
        return [item leadingAnchor];
    case platform::NSLayoutAttribute::Trailing:
        return [item trailingAnchor];
    case platform::NSLayoutAttribute::Bottom:
        return [item bottomAnchor];
    }
    return nil;
}

NSLayoutAnchor* nativeAnchor(platform::NSLayoutAnchor const& anchor)
{
    UIView* view = UIViewPeer::of(*anchor.view).native();
    bool const isWhole = anchor.item == platform::NSLayoutAnchor::Item::View;
    return edgeOf(isWhole ? static_cast<id>(view) : view.safeAreaLayoutGuide, anchor.attribute);
}

}

UIViewPeer::UIViewPeer(platform::UIView& owner, UIView* native) : m_owner(owner), m_bond(owner, native) { }

UIView* UIViewPeer::makeNative(platform::CGRect frame, std::optional<std::string_view> nativeClass)
{
    CGRect const native = CGRectMake(frame.x, frame.y, frame.width, frame.height);
    Class const named = nativeClass ? NSClassFromString(stringOf(*nativeClass)) : Nil;
    if (!named)
        return [[UIView alloc] initWithFrame:native];
    if ([s_adopted isKindOfClass:named])
        return std::exchange(s_adopted, nil);
    id const made = [static_cast<id<ZLVView>>([named alloc]) initForOwnerWithFrame:native];
    return made;
}

void UIViewPeer::adoptNext(UIView* native)
{
    s_adopted = native;
}

platform::CGRect UIViewPeer::bounds() const
{
    UIView* view = native();
    CGRect const bounds = view ? view.bounds : CGRectMake(0, 0, 0, 0);
    return { 0, 0, bounds.size.width, bounds.size.height };
}

void UIViewPeer::addSubview(platform::UIView& child)
{
    if (UIView* added = of(child).native())
        [native() addSubview:added];
}

void UIViewPeer::removeSubview(platform::UIView& child)
{
    UIView* removed = of(child).native();
    // The host may have put it elsewhere meanwhile.
    if (removed && removed.superview == native())
        [removed removeFromSuperview];
}

void UIViewPeer::bringSubviewToFront(platform::UIView& child)
{
    if (UIView* moved = of(child).native())
        [native() bringSubviewToFront:moved];
}

void UIViewPeer::setHidden(bool hidden)
{
    native().hidden = hidden;
}

void UIViewPeer::setBackgroundColor(platform::UIColor color)
{
    native().backgroundColor = [UIColor colorWithRed:color.red green:color.green blue:color.blue alpha:color.alpha];
}

void UIViewPeer::setTranslatesAutoresizingMaskIntoConstraints(bool translates)
{
    native().translatesAutoresizingMaskIntoConstraints = translates;
}

void UIViewPeer::activate(platform::NSLayoutConstraint const& constraint)
{
    NSLayoutAnchor* first = nativeAnchor(constraint.firstAnchor());
    NSLayoutAnchor* second = nativeAnchor(constraint.secondAnchor());
    if (!first || !second)
        return;
    NSLayoutConstraint* made = [first constraintEqualToAnchor:second];
    made.active = YES;
    m_constraints.emplace_back(constraint, made);
}

void UIViewPeer::deactivate(platform::NSLayoutConstraint const& constraint)
{
    // With its view a constraint has ended already.
    UIView* view = native();
    std::erase_if(m_constraints, [&constraint, view](auto const& entry) {
        if (entry.first != constraint)
            return false;
        if (view && entry.second.active)
            entry.second.active = NO;
        return true;
    });
}

void UIViewPeer::layoutIfNeeded()
{
    auto const* root = &m_owner;
    while (root->superview())
        root = root->superview();
    [of(*root).native() layoutIfNeeded];
}

void UIViewPeer::addGestureRecognizer(platform::UIGestureRecognizer& recognizer)
{
    // The SDK makes no other kind.
    auto* const edgePan = dynamic_cast<platform::UIScreenEdgePanGestureRecognizer*>(&recognizer);
    if (UIView* view = edgePan ? native() : nil)
        [view addGestureRecognizer:makeEdgePan(m_owner, *edgePan)];
}

}
