#pragma once

#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <functional>
#include <memory>
#include <string>

/// The app's side of the shop. It knows the SDK and no toolkit, so its tests need no screen. Main thread.
class Shop final
    : public std::enable_shared_from_this<Shop>
    , private zelvora::ZelvoraSDK::ZelvoraSDKDelegate {
public:
    using View = std::shared_ptr<zelvora::platform::UIView>;
    using Action = std::function<void()>;

    /// What the app brings along. Called on the main thread.
    struct Parts {
        std::function<View(Action goBack)> makeHeader;
        std::function<View()> makeFooter;
        /// A page shares a text with the user's friends.
        std::function<void(std::string const& text)> share;
        std::function<void(std::string const& code)> showError;
        std::function<void()> didLeave;
    };

    [[nodiscard]] static std::shared_ptr<Shop> create(Parts parts);

    /// Opens the shop from a screen, as soon as the SDK is ready.
    void open(std::shared_ptr<zelvora::platform::UIViewController> const& presenter);

private:
    explicit Shop(Parts parts);

    // ZelvoraSDK::ZelvoraSDKDelegate
    bool zelvoraSDKShouldHandleBackAction(zelvora::ZelvoraWebView& webView) override;
    void zelvoraSDKWillDismiss() override;

    void registerActions();
    void initialize();
    void report(zelvora::ZelvoraSDKError const& error);

    Parts m_parts;
    bool m_isConfigured = false;
};
