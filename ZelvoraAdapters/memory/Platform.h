#pragma once

#include "ZelvoraAdapters/memory/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/memory/Foundation/Bundle.h"
#include "ZelvoraAdapters/memory/Foundation/Clock.h"
#include "ZelvoraAdapters/memory/Foundation/URLSession.h"
#include "ZelvoraAdapters/memory/Foundation/UserDefaults.h"
#include "ZelvoraAdapters/memory/Tracking/ASIdentifierManager.h"
#include "ZelvoraAdapters/memory/Tracking/ATTrackingManager.h"
#include "ZelvoraAdapters/memory/UIKit/Screen.h"
#include "ZelvoraAdapters/memory/UIKit/UIApplication.h"
#include "ZelvoraAdapters/memory/WebKit/WebView.h"
#include "ZelvoraAdapters/memory/os/Log.h"
#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"
#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Platform.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// An adapter for tests: a whole system in memory, which the test drives and reads. Most tests of a host need
/// `readyShop` and `Page` only; the rest is reached from `Platform`.
namespace zelvora::memory {

/// The initial state of a platform. Each part can also be set later.
struct Options {
    /// The app's identifier. If it is absent, the app has none.
    std::optional<std::string> bundleIdentifier = "com.example.host";
    /// What the wall clock shows at first; the test moves it.
    platform::Date now = Clock::start;
    /// What earlier launches left in the preferences.
    UserDefaults::Contents storedValues {};
    /// The state that the app starts in.
    platform::UIApplicationState applicationState = platform::UIApplicationState::Active;
    /// What the user decided in an earlier launch. If it is not determined, the first request shows the prompt.
    platform::ATTrackingAuthorizationStatus trackingStatus = platform::ATTrackingAuthorizationStatus::NotDetermined;
    /// Used instead of the addresses that are compiled in.
    std::optional<platform::ServiceAddresses> serviceAddresses {};
};

/// The whole system in memory, for testing the SDK and its hosts: nothing happens on its own, nothing depends on the
/// machine, and every call can be read back. The test runs the queues, advances the time, and answers requests, prompts
/// and pages through the parts below; its thread acts as the system's threads.
///
///     auto& platform = memory::install();
///     ZelvoraSDK::shared().initialize(...);
///     platform.runUntilIdle();
///     platform.urlSession().answer(200, R"({"data": {"shopId": "shop"}})");
///     platform.runUntilIdle();
class ZELVORA_API Platform final : public platform::Platform {
public:
    /// Installs nothing: see `memory::install`. The thread that makes a platform is its main thread.
    explicit Platform(Options options = {});

    /// Call before the SDK first reads them.
    void setServiceAddresses(std::optional<platform::ServiceAddresses> addresses)
    {
        m_serviceAddresses = std::move(addresses);
    }

    /// Runs the main queue, the global queue and the loader's queue until no block is due on any.
    void runUntilIdle();
    /// See `Screen::layout`.
    void layout() { m_screen.layout(); }

    /// What the user sees and has seen.
    [[nodiscard]] Screen& screen() { return m_screen; }
    /// What the SDK has logged.
    [[nodiscard]] Log& log() { return m_log; }
    /// The web views that still exist, oldest first.
    [[nodiscard]] std::vector<std::shared_ptr<WebView>> webViews() const;

    // platform::Platform
    [[nodiscard]] std::optional<platform::ServiceAddresses> serviceAddresses() const override
    {
        return m_serviceAddresses;
    }
    /// Whether this is the thread that made the platform.
    [[nodiscard]] bool isMainThread() const override { return std::this_thread::get_id() == m_mainThread; }
    /// See `Screen::complaints`.
    void complain(std::string const& sentence) override { m_screen.complain(sentence); }
    [[nodiscard]] Bundle& mainBundle() override { return m_mainBundle; }
    [[nodiscard]] Clock& clock() override { return m_clock; }
    [[nodiscard]] UserDefaults& standardUserDefaults() override { return m_userDefaults; }
    [[nodiscard]] shared::NotificationCenter& notificationCenter() override { return m_notificationCenter; }
    [[nodiscard]] URLSession& urlSession() override { return m_urlSession; }
    [[nodiscard]] platform::JSONSerialization& jsonSerialization() override { return m_jsonSerialization; }
    [[nodiscard]] DispatchQueue& mainQueue() override { return m_mainQueue; }
    [[nodiscard]] DispatchQueue& globalQueue() override { return m_globalQueue; }
    [[nodiscard]] ATTrackingManager& trackingManager() override { return m_trackingManager; }
    [[nodiscard]] ASIdentifierManager& identifierManager() override { return m_identifierManager; }
    [[nodiscard]] UIApplication& application() override { return m_application; }
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override;
    [[nodiscard]] std::unique_ptr<platform::UIView::Peer> makeViewPeer(
        platform::UIView& owner, platform::CGRect frame, std::optional<std::string_view> nativeClass) override;
    [[nodiscard]] std::unique_ptr<platform::UIViewController::Peer> makeViewControllerPeer(
        platform::UIViewController& owner, std::optional<std::string_view> nativeClass) override;
    [[nodiscard]] std::shared_ptr<platform::WKUserContentController> makeUserContentController() override;
    [[nodiscard]] std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override;
    void animate(platform::TimeInterval duration, std::function<void()> const& animations) override;

private:
    std::thread::id m_mainThread = std::this_thread::get_id();
    std::optional<platform::ServiceAddresses> m_serviceAddresses;
    Log m_log;
    Bundle m_mainBundle;
    Clock m_clock;
    UserDefaults m_userDefaults;
    shared::NotificationCenter m_notificationCenter;
    shared::JSONSerialization m_jsonSerialization;
    UIApplication m_application { m_notificationCenter };
    ASIdentifierManager m_identifierManager;
    Screen m_screen;
    std::vector<std::weak_ptr<WebView>> m_webViews;
    DispatchQueue m_mainQueue { m_clock };
    DispatchQueue m_globalQueue { m_clock };
    // These two last, so that they are destroyed first and complete what is pending while the rest still exists.
    ATTrackingManager m_trackingManager { m_globalQueue };
    URLSession m_urlSession { m_clock };
};

/// Makes a platform in memory, installs it and returns it. Once per process, on the main thread.
ZELVORA_API Platform& install(Options options = {});

}
