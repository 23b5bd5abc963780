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
#include <string_view>

/// What the SDK needs of a system, under the phone's own names. An adapter implements the interfaces, from `Platform`
/// down; the other classes are the same on every system.
namespace zelvora::platform {

/// What the SDK runs on: every service of the system, and factories for the things that there can be many of. An
/// adapter derives it, and the host installs one before it first uses the SDK:
///
///     platform::Platform::install(std::make_unique<MyPlatform>());
///
/// Once installed, a platform is never destroyed: threads of the system may still call in while the process ends. It
/// owns the services that it returns by reference. Any thread may ask for them, and gets the same object every time;
/// their own comments name the threads that may use them. No factory (`make...`) returns null, and all but `makeLogger`
/// are for the main thread.
class ZELVORA_API Platform {
public:
    /// Call once per process, on any thread, before `current`: a host whose first use of the SDK is a log line in the
    /// background installs there. A second call stops the process with a message. A null pointer installs nothing. An
    /// adapter may ask for the main thread where its platform is made.
    static void install(std::unique_ptr<Platform> platform);
    /// The installed platform. Any thread. Stops the process with a message if there is none yet.
    [[nodiscard]] static Platform& current();

    virtual ~Platform() = default;

    /// Addresses to use instead of the compiled-in ones, such as those of a local service: all of them or none. Any
    /// thread. The SDK asks at each use, so the answer must not change once the SDK has been used.
    [[nodiscard]] virtual std::optional<ServiceAddresses> serviceAddresses() const { return std::nullopt; }

    /// Whether the calling thread is the main one, on which the blocks of `mainQueue` run. Where the system has a main
    /// thread, it is that one, whichever thread installs the platform; elsewhere the adapter chooses one, such as the
    /// thread that made the platform. Any thread. By default every thread counts as the main one, for test doubles that
    /// have only one thread; an adapter overrides it.
    [[nodiscard]] virtual bool isMainThread() const { return true; }
    /// Reports a call that its interface forbids but that does not stop the process. The adapter writes the sentence,
    /// which is for the developers of the host, to a log of its own. Any thread. By default nothing is reported.
    virtual void complain(std::string const& /*sentence*/) { }

    /// The host app's bundle.
    [[nodiscard]] virtual Bundle& mainBundle() = 0;
    /// The wall clock.
    [[nodiscard]] virtual Clock& clock() = 0;
    /// The app's preferences.
    [[nodiscard]] virtual UserDefaults& standardUserDefaults() = 0;
    /// The default center, on which the application's notifications are posted.
    [[nodiscard]] virtual NotificationCenter& notificationCenter() = 0;
    /// The HTTP loader.
    [[nodiscard]] virtual URLSession& urlSession() = 0;
    /// The JSON reader and writer.
    [[nodiscard]] virtual JSONSerialization& jsonSerialization() = 0;

    /// A serial queue whose blocks run on the main thread.
    [[nodiscard]] virtual DispatchQueue& mainQueue() = 0;
    /// A concurrent queue whose blocks run off the main thread.
    [[nodiscard]] virtual DispatchQueue& globalQueue() = 0;

    /// The permission to track.
    [[nodiscard]] virtual ATTrackingManager& trackingManager() = 0;
    /// The advertising identifier.
    [[nodiscard]] virtual ASIdentifierManager& identifierManager() = 0;
    /// The running app.
    [[nodiscard]] virtual UIApplication& application() = 0;

    /// A handle to the system log that writes under these two names. Any thread.
    [[nodiscard]] virtual std::unique_ptr<Logger> makeLogger(
        std::string const& subsystem, std::string const& category) = 0;
    /// Called by the constructor of `owner`: the peer may keep its address but must not call it yet. `frame` is in
    /// points. `nativeClass` names the class that the native view has to be of, where hosts know such classes by name;
    /// elsewhere, and if it is absent, any view will do. While `owner` is constructed nothing else could tell its
    /// class.
    [[nodiscard]] virtual std::unique_ptr<UIView::Peer> makeViewPeer(
        UIView& owner, CGRect frame, std::optional<std::string_view> nativeClass) = 0;
    /// As `makeViewPeer`.
    [[nodiscard]] virtual std::unique_ptr<UIViewController::Peer> makeViewControllerPeer(
        UIViewController& owner, std::optional<std::string_view> nativeClass) = 0;
    /// Makes the object that receives a web view's scripts and message handlers before the view itself is made.
    [[nodiscard]] virtual std::shared_ptr<WKUserContentController> makeUserContentController() = 0;
    /// The configuration must hold a content controller that this platform made.
    [[nodiscard]] virtual std::shared_ptr<WKWebView> makeWebView(
        CGRect frame, WKWebViewConfiguration configuration) = 0;

    /// Carries out `UIView::animate`. Main thread.
    virtual void animate(TimeInterval duration, std::function<void()> const& animations) = 0;
};

}
