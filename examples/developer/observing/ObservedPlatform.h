#pragma once

#include "ZelvoraAdapters/memory/ForwardingPlatform.h"
#include "examples/developer/observing/PlatformObserver.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>

namespace zelvora::developer {

/// Another platform, observed: the SDK on it is the one that ships, and so is what is done with its calls, except for
/// what a developer switches here. The question about tracking has been answered with yes, so that no page waits for
/// it.
class ObservedPlatform final : public memory::ForwardingPlatform {
public:
    /// What the tracking events and the entry address have as the advertising id: the same on every machine.
    static constexpr char const* advertisingIdentifier = "11111111-2222-4333-8444-555555555555";

    /// Made on the main thread. The observer must outlive this platform.
    ObservedPlatform(std::unique_ptr<platform::Platform> target, PlatformObserver& observer);
    ~ObservedPlatform() override;

    /// The keys under which something was stored since the start, in the preferences' own form. Any thread.
    [[nodiscard]] std::set<std::string> storedKeys() const;
    /// The platform's preferences: reading them here is not told to the observer.
    [[nodiscard]] platform::UserDefaults& preferences() const { return target().standardUserDefaults(); }

    /// While there is no network the SDK's requests go to a port where nobody listens. Any thread.
    void setOffline(bool offline) { m_isOffline = offline; }
    /// Lets the clock that the SDK reads go on by so many seconds. Any thread.
    void pass(platform::TimeInterval seconds);

    // platform::Platform
    [[nodiscard]] platform::Clock& clock() override;
    [[nodiscard]] platform::UserDefaults& standardUserDefaults() override;
    [[nodiscard]] platform::NotificationCenter& notificationCenter() override;
    [[nodiscard]] platform::URLSession& urlSession() override;
    [[nodiscard]] platform::DispatchQueue& mainQueue() override;
    [[nodiscard]] platform::ATTrackingManager& trackingManager() override;
    [[nodiscard]] platform::ASIdentifierManager& identifierManager() override;
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override;
    [[nodiscard]] std::shared_ptr<platform::WKUserContentController> makeUserContentController() override;
    [[nodiscard]] std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override;

    /// For the services: tells the observer now, or later on the main thread.
    void tell(std::function<void(PlatformObserver&)> const& event);
    [[nodiscard]] PlatformObserver& observer() const { return m_observer; }
    [[nodiscard]] bool isOffline() const { return m_isOffline; }

private:
    struct Services;

    PlatformObserver& m_observer;
    std::thread::id m_mainThread = std::this_thread::get_id();
    std::atomic<bool> m_isOffline = false;
    std::unique_ptr<Services> m_services;
};

}
