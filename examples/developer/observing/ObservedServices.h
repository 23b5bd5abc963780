#pragma once

#include "ZelvoraAdapters/memory/ForwardingNotificationCenter.h"
#include "ZelvoraAdapters/memory/ForwardingUserDefaults.h"
#include "ZelvoraPlatform/Platform.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace zelvora::developer {

class ObservedPlatform;

// The services of an observed platform. Each passes every call on to the target's own and tells the observer.

class ObservedDefaults final : public memory::ForwardingUserDefaults {
public:
    explicit ObservedDefaults(ObservedPlatform& platform);

    /// The keys under which something was stored. Any thread.
    [[nodiscard]] std::set<std::string> keys() const;

    // platform::UserDefaults
    void setObject(std::optional<platform::Value> value, std::string const& key) override;
    void setDouble(double number, std::string const& key) override;
    void removeObject(std::string const& key) override;

private:
    void didStore(std::string const& key);

    ObservedPlatform& m_platform;
    mutable std::mutex m_mutex;
    std::set<std::string> m_keys;
};

class ObservedNotifications final : public memory::ForwardingNotificationCenter {
public:
    explicit ObservedNotifications(ObservedPlatform& platform);

    // platform::NotificationCenter
    void post(platform::Notification notification) override;

private:
    ObservedPlatform& m_platform;
};

class ObservedSession final : public platform::URLSession {
public:
    explicit ObservedSession(ObservedPlatform& platform) : m_platform(platform) { }

    // platform::URLSession
    void dataTask(platform::URLRequest request, Completion completion) override;

private:
    ObservedPlatform& m_platform;
    std::atomic<std::uint64_t> m_sent = 0;
};

class ObservedQueue final : public platform::DispatchQueue {
public:
    explicit ObservedQueue(ObservedPlatform& platform) : m_platform(platform) { }

    // platform::DispatchQueue
    void async(Work work) override;
    void asyncAfter(platform::TimeInterval delay, Work work) override;

private:
    ObservedPlatform& m_platform;
};

class ObservedLogger final : public platform::Logger {
public:
    ObservedLogger(ObservedPlatform& platform, std::unique_ptr<platform::Logger> target);

    // platform::Logger
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const override;
    void log(platform::OSLogType type, std::string const& message) override;

private:
    ObservedPlatform& m_platform;
    std::unique_ptr<platform::Logger> m_target;
};

class ObservedContentController final : public platform::WKUserContentController {
public:
    ObservedContentController(ObservedPlatform& platform, std::shared_ptr<platform::WKUserContentController> target);
    ~ObservedContentController() override;

    [[nodiscard]] platform::WKUserContentController& target() const { return *m_target; }

    // platform::WKUserContentController
    void addScriptMessageHandler(platform::WKScriptMessageHandler& handler, std::string const& name) override;
    void removeScriptMessageHandler(std::string const& name) override;
    void addUserScript(platform::WKUserScript script) override;

private:
    class Handler;

    ObservedPlatform& m_platform;
    std::shared_ptr<platform::WKUserContentController> m_target;
    std::map<std::string, std::unique_ptr<Handler>> m_handlers;
};

/// The user has allowed tracking.
class AnsweredTracking final
    : public platform::ATTrackingManager
    , public platform::ASIdentifierManager {
public:
    // platform::ATTrackingManager
    [[nodiscard]] platform::ATTrackingAuthorizationStatus trackingAuthorizationStatus() const override;
    void requestTrackingAuthorization(
        platform::CompletionHandler<void(platform::ATTrackingAuthorizationStatus)> completion) override;

    // platform::ASIdentifierManager
    [[nodiscard]] std::string advertisingIdentifier() const override;
};

/// The target's clock, and what a developer has let pass besides.
class ShiftedClock final : public platform::Clock {
public:
    explicit ShiftedClock(ObservedPlatform& platform) : m_platform(platform) { }

    void pass(platform::TimeInterval seconds);

    // platform::Clock
    [[nodiscard]] platform::Date now() const override;

private:
    ObservedPlatform& m_platform;
    mutable std::mutex m_mutex;
    platform::TimeInterval m_passed = 0;
};

}
