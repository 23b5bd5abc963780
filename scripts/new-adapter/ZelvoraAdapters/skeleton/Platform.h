#pragma once

#include "ZelvoraAdapters/skeleton/Concurrency/GlobalQueue.h"
#include "ZelvoraAdapters/skeleton/Concurrency/MainQueue.h"
#include "ZelvoraAdapters/skeleton/Foundation/Bundle.h"
#include "ZelvoraAdapters/skeleton/Foundation/Clock.h"
#include "ZelvoraAdapters/skeleton/Foundation/JSONSerialization.h"
#include "ZelvoraAdapters/skeleton/Foundation/NotificationCenter.h"
#include "ZelvoraAdapters/skeleton/Foundation/URLSession.h"
#include "ZelvoraAdapters/skeleton/Foundation/UserDefaults.h"
#include "ZelvoraAdapters/skeleton/Tracking/ASIdentifierManager.h"
#include "ZelvoraAdapters/skeleton/Tracking/ATTrackingManager.h"
#include "ZelvoraAdapters/skeleton/UIKit/UIApplication.h"
#include "ZelvoraPlatform/Platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zelvora::skeleton {

/// An adapter of which nothing is written but its frame: it compiles, and stops with the name of the first method that
/// is asked for.
class Platform final : public platform::Platform {
public:
    // platform::Platform
    [[nodiscard]] Bundle& mainBundle() override { return m_mainBundle; }
    [[nodiscard]] Clock& clock() override { return m_clock; }
    [[nodiscard]] UserDefaults& standardUserDefaults() override { return m_userDefaults; }
    [[nodiscard]] NotificationCenter& notificationCenter() override { return m_notificationCenter; }
    [[nodiscard]] URLSession& urlSession() override { return m_urlSession; }
    [[nodiscard]] JSONSerialization& jsonSerialization() override { return m_jsonSerialization; }
    [[nodiscard]] MainQueue& mainQueue() override { return m_mainQueue; }
    [[nodiscard]] GlobalQueue& globalQueue() override { return m_globalQueue; }
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
    // Some of these will want arguments: the bundle the app's identifier, the preferences the path of their file, the
    // network and the permission to track the queue that they call back on, which is then made before them. What the
    // host has to say comes through this class's constructor.
    Bundle m_mainBundle;
    Clock m_clock;
    UserDefaults m_userDefaults;
    NotificationCenter m_notificationCenter;
    JSONSerialization m_jsonSerialization;
    MainQueue m_mainQueue;
    GlobalQueue m_globalQueue;
    ATTrackingManager m_trackingManager;
    ASIdentifierManager m_identifierManager;
    UIApplication m_application;
    URLSession m_urlSession;
};

}
