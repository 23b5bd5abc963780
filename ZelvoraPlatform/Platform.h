#pragma once

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Bundle.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/JSONSerialization.h"
#include "ZelvoraPlatform/Foundation/NotificationCenter.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"
#include "ZelvoraPlatform/ServiceAddresses.h"
#include "ZelvoraPlatform/Tracking/ASIdentifierManager.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"
#include "ZelvoraPlatform/UIKit/UIApplication.h"
#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"
#include "ZelvoraPlatform/os/Logger.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zelvora::platform {

/// What the SDK runs on: every service of the system, and the makers of what there can be many of. The host installs
/// one before it first uses the SDK, and it lives until the process ends. The services are owned by the platform; their
/// own comments tell their threads.
class ZELVORA_API Platform {
public:
    /// Once per process, before `current()`, on the main thread; anything else is a programming error that stops the
    /// process.
    static void install(std::unique_ptr<Platform> platform);
    /// Any thread. Before `install` a programming error that stops the process.
    [[nodiscard]] static Platform& current();

    virtual ~Platform() = default;

    /// Addresses to use in place of those that are compiled in, such as a local service's.
    [[nodiscard]] virtual std::optional<ServiceAddresses> serviceAddresses() const { return std::nullopt; }

    [[nodiscard]] virtual Bundle& mainBundle() = 0;
    [[nodiscard]] virtual Clock& clock() = 0;
    [[nodiscard]] virtual UserDefaults& standardUserDefaults() = 0;
    [[nodiscard]] virtual NotificationCenter& notificationCenter() = 0;
    [[nodiscard]] virtual URLSession& urlSession() = 0;
    [[nodiscard]] virtual JSONSerialization& jsonSerialization() = 0;

    /// Serial, on the main thread.
    [[nodiscard]] virtual DispatchQueue& mainQueue() = 0;
    /// Off the main thread; blocks may run at the same time as one another.
    [[nodiscard]] virtual DispatchQueue& globalQueue() = 0;

    [[nodiscard]] virtual ATTrackingManager& trackingManager() = 0;
    [[nodiscard]] virtual ASIdentifierManager& identifierManager() = 0;
    [[nodiscard]] virtual UIApplication& application() = 0;

    [[nodiscard]] virtual std::unique_ptr<Logger> makeLogger(
        std::string const& subsystem, std::string const& category) = 0;
    [[nodiscard]] virtual std::unique_ptr<UIView::Peer> makeViewPeer(UIView& owner, CGRect frame) = 0;
    [[nodiscard]] virtual std::unique_ptr<UIViewController::Peer> makeViewControllerPeer(UIViewController& owner) = 0;
    [[nodiscard]] virtual std::shared_ptr<WKUserContentController> makeUserContentController() = 0;
    [[nodiscard]] virtual std::shared_ptr<WKWebView> makeWebView(
        CGRect frame, WKWebViewConfiguration configuration) = 0;

    /// See `UIView::animate`.
    virtual void animate(TimeInterval duration, std::function<void()> const& animations) = 0;
};

}
