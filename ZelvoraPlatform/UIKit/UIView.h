#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/UIKit/Geometry.h"
#include "ZelvoraPlatform/UIKit/NSLayoutConstraint.h"
#include "ZelvoraPlatform/UIKit/UIColor.h"
#include "ZelvoraPlatform/UIKit/UILayoutGuide.h"

#include <functional>
#include <memory>
#include <vector>

namespace zelvora::platform {

class UIGestureRecognizer;

/// A rectangle on the screen with others in it. Main thread. A view keeps its subviews; who makes a view holds it until
/// it is in another. The class keeps the tree; its peer, made by the platform, shows it.
class ZELVORA_API UIView : public std::enable_shared_from_this<UIView> {
public:
    /// The native view. The owner outlives it and calls it on the main thread, after it has changed its own state. A
    /// peer may keep the owner's address from the start but uses it only later.
    class Peer {
    public:
        virtual ~Peer() = default;

        [[nodiscard]] virtual CGRect bounds() const = 0;
        /// The child is at the end of the owner's subviews already.
        virtual void addSubview(UIView& child) = 0;
        /// Active constraints that name the child or what is in it have been deactivated before.
        virtual void removeSubview(UIView& child) = 0;
        virtual void bringSubviewToFront(UIView& child) = 0;
        virtual void setHidden(bool hidden) = 0;
        virtual void setBackgroundColor(UIColor color) = 0;
        virtual void setTranslatesAutoresizingMaskIntoConstraints(bool translates) = 0;
        /// Both items are the owner, its safe area or views below it.
        virtual void activate(NSLayoutConstraint const& constraint) = 0;
        virtual void deactivate(NSLayoutConstraint const& constraint) = 0;
        /// Lays the view out now if anything changed; within `UIView::animate` the frames move to their new places over
        /// its duration.
        virtual void layoutIfNeeded() = 0;
        /// The owner holds the recogniser as long as this peer lives.
        virtual void addGestureRecognizer(UIGestureRecognizer& recognizer) = 0;
    };

    explicit UIView(CGRect frame = {});
    virtual ~UIView();
    UIView(UIView const&) = delete;
    UIView& operator=(UIView const&) = delete;

    [[nodiscard]] CGRect bounds() const;
    [[nodiscard]] UIView* superview() const { return m_superview; }
    /// Back to front.
    [[nodiscard]] std::vector<std::shared_ptr<UIView>> const& subviews() const { return m_subviews; }

    /// Whether the other view is this one or somewhere in it.
    [[nodiscard]] bool contains(UIView const& other) const;
    /// A view that is in another one already leaves it first.
    void addSubview(std::shared_ptr<UIView> child);
    void removeFromSuperview();
    void bringSubviewToFront(UIView& child);

    [[nodiscard]] bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);
    void setBackgroundColor(UIColor color);
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);

    [[nodiscard]] NSLayoutAnchor topAnchor() { return anchor(NSLayoutAttribute::Top); }
    [[nodiscard]] NSLayoutAnchor leadingAnchor() { return anchor(NSLayoutAttribute::Leading); }
    [[nodiscard]] NSLayoutAnchor trailingAnchor() { return anchor(NSLayoutAttribute::Trailing); }
    [[nodiscard]] NSLayoutAnchor bottomAnchor() { return anchor(NSLayoutAttribute::Bottom); }
    [[nodiscard]] UILayoutGuide safeAreaLayoutGuide() { return UILayoutGuide(*this); }
    /// The active constraints that this view keeps as nearest common ancestor, in the order of activation.
    [[nodiscard]] std::vector<NSLayoutConstraint> const& constraints() const { return m_constraints; }

    void addGestureRecognizer(std::shared_ptr<UIGestureRecognizer> const& recognizer);
    [[nodiscard]] std::vector<std::shared_ptr<UIGestureRecognizer>> const& gestureRecognizers() const
    {
        return m_gestureRecognizers;
    }

    void layoutIfNeeded();

    /// Runs the block at once; what it lays out moves over `duration` seconds, with the system's default curve.
    static void animate(TimeInterval duration, std::function<void()> const& animations);

    [[nodiscard]] Peer& peer() const { return *m_peer; }

protected:
    /// For views of the adapters: a system view, or one of the host's own.
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
    // Reset by the superview, when this view leaves it or it is destroyed.
    UIView* m_superview = nullptr;
    std::vector<std::shared_ptr<UIView>> m_subviews;
    std::vector<NSLayoutConstraint> m_constraints;
    std::vector<std::shared_ptr<UIGestureRecognizer>> m_gestureRecognizers;
    bool m_hidden = false;
};

}
