#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

namespace zelvora::skeleton {

/// `ZelvoraAdapters/shared` solves the constraints and decides which gestures begin.
class UIViewPeer final : public platform::UIView::Peer {
public:
    UIViewPeer(platform::UIView& /*owner*/, platform::CGRect /*frame*/) { }

    // platform::UIView::Peer
    [[nodiscard]] platform::CGRect bounds() const override { missing("UIViewPeer::bounds"); }
    void addSubview(platform::UIView&) override { missing("UIViewPeer::addSubview"); }
    void removeSubview(platform::UIView&) override { missing("UIViewPeer::removeSubview"); }
    void bringSubviewToFront(platform::UIView&) override { missing("UIViewPeer::bringSubviewToFront"); }
    void setHidden(bool) override { missing("UIViewPeer::setHidden"); }
    void setBackgroundColor(platform::UIColor) override { missing("UIViewPeer::setBackgroundColor"); }
    void setTranslatesAutoresizingMaskIntoConstraints(bool) override
    {
        missing("UIViewPeer::setTranslatesAutoresizingMaskIntoConstraints");
    }
    void activate(platform::NSLayoutConstraint const&) override { missing("UIViewPeer::activate"); }
    void deactivate(platform::NSLayoutConstraint const&) override { missing("UIViewPeer::deactivate"); }
    void layoutIfNeeded() override { missing("UIViewPeer::layoutIfNeeded"); }
    void addGestureRecognizer(platform::UIGestureRecognizer&) override { missing("UIViewPeer::addGestureRecognizer"); }
};

}
