#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/UIKit/Geometry.h"
#include "ZelvoraPlatform/UIKit/NSLayoutConstraint.h"
#include "ZelvoraPlatform/UIKit/UIColor.h"
#include "ZelvoraPlatform/UIKit/UILayoutGuide.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace zelvora::platform {

class UIGestureRecognizer;

/// A rectangle on the screen that may contain others. Main thread. A view owns its subviews; whoever makes a view owns
/// it until it is added to another.
///
/// This class keeps the tree, the hidden flag and the active constraints, so that all adapters agree on them. Its peer,
/// made by the platform, shows what it is told.
///
///     auto root = std::make_shared<UIView>();
///     auto header = std::make_shared<UIView>();
///     root->addSubview(header);
///     header->setTranslatesAutoresizingMaskIntoConstraints(false);
///     NSLayoutConstraint::activate({ header->topAnchor().constraintEqualTo(root->topAnchor()) });
class ZELVORA_API UIView : public std::enable_shared_from_this<UIView> {
public:
    /// The native view. The owner calls it on the main thread, after changing its own state. A peer is made before its
    /// owner is complete and destroyed after the owner's members: its constructor and destructor may keep or compare
    /// the owner's address but must not use the owner.
    class Peer {
    public:
        virtual ~Peer() = default;

        /// The origin is 0, 0; the size is that of the latest layout, or of the initial frame before the first.
        [[nodiscard]] virtual CGRect bounds() const = 0;
        /// The child is already the last of the owner's subviews. It may have been hidden before.
        virtual void addSubview(UIView& child) = 0;
        /// The child is still among the owner's subviews. Constraints between what stays and what leaves have been
        /// deactivated.
        virtual void removeSubview(UIView& child) = 0;
        /// The child is already the last of the owner's subviews.
        virtual void bringSubviewToFront(UIView& child) = 0;
        /// A hidden view is not shown, nor are its subviews, but all keep their places in the layout.
        virtual void setHidden(bool hidden) = 0;
        /// Fills the view, behind its subviews. Transparent until the first call.
        virtual void setBackgroundColor(UIColor color) = 0;
        /// While true, as at first, the view keeps its frame; while false, constraints place it.
        virtual void setTranslatesAutoresizingMaskIntoConstraints(bool translates) = 0;
        /// The constraint was not active. Each of its anchors belongs to the owner or to a view inside it.
        virtual void activate(NSLayoutConstraint const& constraint) = 0;
        /// The constraint was active. What it placed stays where it is until the next layout.
        virtual void deactivate(NSLayoutConstraint const& constraint) = 0;
        /// Lays out the whole tree that the owner is in, if anything changed, before it returns. Inside
        /// `UIView::animate` the views move to their new frames over its duration. Most trees are never asked for it:
        /// after any change that the methods above tell of, and when the screen or its safe area changes, the adapter
        /// lays the tree out by itself before it is drawn next, as the system does in each iteration of the main loop.
        virtual void layoutIfNeeded() = 0;
        /// The owner keeps the recognizer from now on.
        virtual void addGestureRecognizer(UIGestureRecognizer& recognizer) = 0;
    };

    /// The frame is in points, in the superview. Needs an installed platform. A class whose native view has to be of a
    /// class of its own passes that one's name: see `Platform::makeViewPeer`.
    explicit UIView(CGRect frame = {}, std::optional<std::string_view> nativeClass = std::nullopt);
    virtual ~UIView();
    UIView(UIView const&) = delete;
    UIView& operator=(UIView const&) = delete;

    /// The origin is 0, 0; the size is that of the latest layout, or of the initial frame before the first.
    [[nodiscard]] CGRect bounds() const;
    /// The view that this one is in, or nullptr.
    [[nodiscard]] UIView* superview() const { return m_superview; }
    /// Back to front.
    [[nodiscard]] std::vector<std::shared_ptr<UIView>> const& subviews() const { return m_subviews; }

    /// Whether the other view is this one or inside it.
    [[nodiscard]] bool contains(UIView const& other) const;
    /// Adds a view, which must not be null, in front of the other subviews. It leaves the view that it was in first,
    /// even if that is this one. Adding a view to itself or to a view inside it stops the process.
    void addSubview(std::shared_ptr<UIView> child);
    /// Also deactivates the constraints between this view, or a view inside it, and views that stay. Does nothing if
    /// the view is in no other. Destroys the view if only its superview owned it.
    void removeFromSuperview();
    /// Does nothing if the view is not a subview of this one.
    void bringSubviewToFront(UIView& child);

    /// Whether this view itself was hidden: a view that is not may still be in one that is.
    [[nodiscard]] bool isHidden() const { return m_hidden; }
    /// A hidden view is not shown, nor are its subviews, but all keep their places in the layout.
    void setHidden(bool hidden);
    /// Transparent until set.
    void setBackgroundColor(UIColor color);
    /// While true, as at first, the view keeps its frame; while false, constraints place it.
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);

    /// An edge of this view, to make constraints with.
    /// @{
    [[nodiscard]] NSLayoutAnchor topAnchor() { return anchor(NSLayoutAttribute::Top); }
    [[nodiscard]] NSLayoutAnchor leadingAnchor() { return anchor(NSLayoutAttribute::Leading); }
    [[nodiscard]] NSLayoutAnchor trailingAnchor() { return anchor(NSLayoutAttribute::Trailing); }
    [[nodiscard]] NSLayoutAnchor bottomAnchor() { return anchor(NSLayoutAttribute::Bottom); }
    /// @}
    /// The part of this view that the system's bars and notches leave free, which is all of a view that they do not
    /// reach.
    [[nodiscard]] UILayoutGuide safeAreaLayoutGuide() { return UILayoutGuide(*this); }
    /// The active constraints of which this view is the nearest common ancestor, in the order of activation.
    [[nodiscard]] std::vector<NSLayoutConstraint> const& constraints() const { return m_constraints; }

    /// The view keeps the recognizer, which must not be null, for as long as it lives. Add each one once.
    void addGestureRecognizer(std::shared_ptr<UIGestureRecognizer> const& recognizer);
    /// In the order in which they were added.
    [[nodiscard]] std::vector<std::shared_ptr<UIGestureRecognizer>> const& gestureRecognizers() const
    {
        return m_gestureRecognizers;
    }

    /// Lays out the whole tree that this view is in, if anything changed, before it returns. Without it, a tree that
    /// changed is laid out before it is drawn next.
    void layoutIfNeeded();

    /// Runs the block before it returns. Views that are laid out in it move to their new frames over `duration` seconds
    /// with the system's default curve, or at once if that is not positive; `bounds` has the new size immediately.
    ///
    ///     UIView::animate(0.3, [&] {
    ///         header->setHidden(true);
    ///         root->layoutIfNeeded();
    ///     });
    static void animate(TimeInterval duration, std::function<void()> const& animations);

    /// For adapters.
    [[nodiscard]] Peer& peer() const { return *m_peer; }

protected:
    /// For adapters' views: a system view, or one of the host's own.
    explicit UIView(std::unique_ptr<Peer> peer);

private:
    friend class NSLayoutConstraint;

    [[nodiscard]] NSLayoutAnchor anchor(NSLayoutAttribute attribute)
    {
        return { this, NSLayoutAnchor::Item::View, attribute };
    }
    void activate(NSLayoutConstraint const& constraint);
    void deactivate(NSLayoutConstraint const& constraint);
    void deactivateConstraintsNaming(UIView const& leaving);

    std::unique_ptr<Peer> m_peer;
    // Reset by the superview when this view leaves it or when it is destroyed.
    UIView* m_superview = nullptr;
    std::vector<std::shared_ptr<UIView>> m_subviews;
    std::vector<NSLayoutConstraint> m_constraints;
    std::vector<std::shared_ptr<UIGestureRecognizer>> m_gestureRecognizers;
    bool m_hidden = false;
};

}
