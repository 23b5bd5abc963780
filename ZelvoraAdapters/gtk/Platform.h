#pragma once

#include "ZelvoraAdapters/gtk/Concurrency/MainContextQueue.h"
#include "ZelvoraAdapters/gtk/Foundation/Bundle.h"
#include "ZelvoraAdapters/gtk/Foundation/Clock.h"
#include "ZelvoraAdapters/gtk/Foundation/URLSession.h"
#include "ZelvoraAdapters/gtk/HostOptions.h"
#include "ZelvoraAdapters/gtk/Tracking/ASIdentifierManager.h"
#include "ZelvoraAdapters/gtk/Tracking/ATTrackingManager.h"
#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"
#include "ZelvoraAdapters/gtk/UIKit/UIApplication.h"
#include "ZelvoraAdapters/gtk/WebKit/WebsiteSession.h"
#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"
#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"
#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Platform.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace zelvora::gtk {

/// Linux desktops and phones: GTK 4, WebKitGTK, libsoup, the journal. Hosts make it by `install` in "Host.h".
class ZELVORA_API Platform final : public platform::Platform {
public:
    /// On the main thread, after `gtk_init`.
    explicit Platform(HostOptions options);

    /// The installed one.
    [[nodiscard]] static Platform& current() { return static_cast<Platform&>(platform::Platform::current()); }

    [[nodiscard]] SafeAreaInsets const& safeAreaInsets() const { return m_options.safeAreaInsets; }

    /// Makes the preferences survive a power cut. Any thread.
    void synchronizeUserDefaults() { m_userDefaults.synchronize(); }

    // platform::Platform
    [[nodiscard]] std::optional<platform::ServiceAddresses> serviceAddresses() const override
    {
        return m_options.serviceAddresses;
    }
    [[nodiscard]] platform::Bundle& mainBundle() override { return m_mainBundle; }
    [[nodiscard]] platform::Clock& clock() override { return m_clock; }
    [[nodiscard]] platform::UserDefaults& standardUserDefaults() override { return m_userDefaults; }
    [[nodiscard]] platform::NotificationCenter& notificationCenter() override { return m_notificationCenter; }
    [[nodiscard]] platform::URLSession& urlSession() override { return m_urlSession; }
    [[nodiscard]] platform::JSONSerialization& jsonSerialization() override { return m_jsonSerialization; }
    [[nodiscard]] platform::DispatchQueue& mainQueue() override { return m_mainQueue; }
    [[nodiscard]] platform::DispatchQueue& globalQueue() override { return m_globalQueue; }
    [[nodiscard]] platform::ATTrackingManager& trackingManager() override { return m_trackingManager; }
    [[nodiscard]] platform::ASIdentifierManager& identifierManager() override { return m_identifierManager; }
    [[nodiscard]] platform::UIApplication& application() override { return m_application; }
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override;
    [[nodiscard]] std::unique_ptr<platform::UIView::Peer> makeViewPeer(
        platform::UIView& owner, platform::CGRect frame) override;
    [[nodiscard]] std::unique_ptr<platform::UIViewController::Peer> makeViewControllerPeer(
        platform::UIViewController& owner) override;
    [[nodiscard]] std::shared_ptr<platform::WKUserContentController> makeUserContentController() override;
    [[nodiscard]] std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override;
    void animate(platform::TimeInterval duration, std::function<void()> const& animations) override;

private:
    [[nodiscard]] WebsiteSession& websiteSession();

    HostOptions m_options;
    std::filesystem::path m_dataDirectory;
    Bundle m_mainBundle;
    Clock m_clock;
    shared::JournaledUserDefaults m_userDefaults;
    shared::NotificationCenter m_notificationCenter;
    shared::JSONSerialization m_jsonSerialization;
    MainContextQueue m_mainQueue;
    shared::ThreadPoolQueue m_globalQueue;
    URLSession m_urlSession;
    TrackingStore m_trackingStore;
    ATTrackingManager m_trackingManager;
    ASIdentifierManager m_identifierManager;
    UIApplication m_application;
    // Made with the first web view: it starts processes.
    std::optional<WebsiteSession> m_websiteSession;
};

}
