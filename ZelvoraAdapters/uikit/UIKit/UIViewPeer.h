#pragma once

#include "ZelvoraAdapters/uikit/UIKit/Bond.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#import <UIKit/UIKit.h>

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvora::uikit {

/// A view as a native one. Once the native view is gone, every call does nothing.
class UIViewPeer final : public platform::UIView::Peer {
public:
    UIViewPeer(platform::UIView& owner, UIView* native);

    [[nodiscard]] static UIViewPeer& of(platform::UIView const& view) { return static_cast<UIViewPeer&>(view.peer()); }

    /// A new native view of the class, a plain one without it, or the one that was adopted for the class.
    [[nodiscard]] static UIView* makeNative(platform::CGRect frame, std::optional<std::string_view> nativeClass);
    /// The next native view that is made of this one's class is this one.
    static void adoptNext(UIView* native);

    [[nodiscard]] UIView* native() const { return m_bond.native(); }
    /// As `Bond::handOver`.
    UIView* handOver() { return m_bond.handOver(); }

    // platform::UIView::Peer
    [[nodiscard]] platform::CGRect bounds() const override;
    void addSubview(platform::UIView& child) override;
    void removeSubview(platform::UIView& child) override;
    void bringSubviewToFront(platform::UIView& child) override;
    void setHidden(bool hidden) override;
    void setBackgroundColor(platform::UIColor color) override;
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) override;
    void activate(platform::NSLayoutConstraint const& constraint) override;
    void deactivate(platform::NSLayoutConstraint const& constraint) override;
    void layoutIfNeeded() override;
    void addGestureRecognizer(platform::UIGestureRecognizer& recognizer) override;

private:
    platform::UIView& m_owner;
    Bond<platform::UIView, UIView> m_bond;
    std::vector<std::pair<platform::NSLayoutConstraint, NSLayoutConstraint*>> m_constraints;
};

}
