#pragma once

#include "ZelvoraAdapters/uikit/UIKit/Bond.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#import <UIKit/UIKit.h>

#include <memory>
#include <optional>
#include <string_view>

namespace zelvora::uikit {

/// A view controller as a native one, which calls the hooks. Its root view is the one that the system makes for it.
/// Once the native controller is gone, every call does nothing.
class UIViewControllerPeer final : public platform::UIViewController::Peer {
public:
    UIViewControllerPeer(platform::UIViewController& owner, UIViewController* native);

    [[nodiscard]] static UIViewControllerPeer& of(platform::UIViewController const& controller)
    {
        return static_cast<UIViewControllerPeer&>(controller.peer());
    }

    /// A new native controller of the class, a plain one without it, or the one that was adopted for the class.
    [[nodiscard]] static UIViewController* makeNative(std::optional<std::string_view> nativeClass);
    /// The next native controller that is made of this one's class is this one.
    static void adoptNext(UIViewController* native);

    [[nodiscard]] UIViewController* native() const { return m_bond.native(); }
    /// As `Bond::handOver`.
    UIViewController* handOver() { return m_bond.handOver(); }

    /// The native controller's own hooks.
    static void viewDidLoad(UIViewController* native);
    static void viewWillDisappear(UIViewController* native, platform::Animated animated);

    // platform::UIViewController::Peer
    [[nodiscard]] std::shared_ptr<platform::UIView> loadView() override;
    [[nodiscard]] std::shared_ptr<platform::UINavigationController> navigationController() const override;
    void setModalPresentationStyle(platform::UIModalPresentationStyle style) override;
    void present(std::shared_ptr<platform::UIViewController> presented, platform::Animated animated) override;
    void dismiss(platform::Animated animated) override;

private:
    Bond<platform::UIViewController, UIViewController> m_bond;
    // Whether the native view is being made for the owner, which then calls its hook itself.
    bool m_isLoadingView = false;
};

}
