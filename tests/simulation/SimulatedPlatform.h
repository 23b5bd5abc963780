#pragma once

#include "ZelvoraAdapters/memory/ForwardingPlatform.h"
#include "ZelvoraAdapters/memory/ForwardingUserDefaults.h"
#include "ZelvoraAdapters/memory/Platform.h"
#include "tests/simulation/Effects.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::simulation {

/// Called when a block begins to run.
using BlockHandler = std::function<void(Queue, std::size_t number)>;

/// A queue in memory that numbers its blocks and tells which one runs.
class NumberedQueue final : public platform::DispatchQueue {
public:
    NumberedQueue(memory::DispatchQueue& target, Queue name, Effects& effects, std::size_t& last, BlockHandler& willRun)
        : m_target(target)
        , m_name(name)
        , m_effects(effects)
        , m_last(last)
        , m_willRun(willRun)
    {
    }

    // platform::DispatchQueue
    void async(Work work) override { asyncAfter(0, std::move(work)); }
    void asyncAfter(platform::TimeInterval delay, Work work) override;

private:
    memory::DispatchQueue& m_target;
    Queue m_name;
    Effects& m_effects;
    std::size_t& m_last;
    BlockHandler& m_willRun;
};

/// Preferences that report every write, and call back before a chosen one.
class WatchedUserDefaults final : public memory::ForwardingUserDefaults {
public:
    WatchedUserDefaults(platform::UserDefaults& target, Effects& effects)
        : ForwardingUserDefaults(target)
        , m_effects(effects)
    {
    }

    /// The write after `writes` further ones calls this instead of being made.
    void interruptAfter(std::size_t writes, std::function<void()> interruption);
    /// Called after every write, with the key.
    std::function<void(std::string const&)> didWrite;

    // platform::UserDefaults
    void setObject(std::optional<platform::Value> value, std::string const& key) override;
    void setDouble(double number, std::string const& key) override;
    void removeObject(std::string const& key) override;

private:
    void willWrite(std::string line);

    Effects& m_effects;
    std::size_t m_writesLeft = 0;
    std::function<void()> m_interruption;
};

/// A loader that reports every request. What was asked stays readable; the memory platform's loader answers it.
class WatchedURLSession final : public platform::URLSession {
public:
    WatchedURLSession(platform::URLSession& target, Effects& effects) : m_target(target), m_effects(effects) { }

    [[nodiscard]] std::vector<platform::URLRequest> const& requests() const { return m_requests; }

    // platform::URLSession
    void dataTask(platform::URLRequest request, Completion completion) override;

private:
    platform::URLSession& m_target;
    Effects& m_effects;
    std::vector<platform::URLRequest> m_requests;
};

/// Tracking permission that reports when the SDK asks.
class WatchedTrackingManager final : public platform::ATTrackingManager {
public:
    WatchedTrackingManager(platform::ATTrackingManager& target, Effects& effects) : m_target(target), m_effects(effects)
    {
    }

    // platform::ATTrackingManager
    [[nodiscard]] platform::ATTrackingAuthorizationStatus trackingAuthorizationStatus() const override
    {
        return m_target.trackingAuthorizationStatus();
    }
    void requestTrackingAuthorization(
        platform::CompletionHandler<void(platform::ATTrackingAuthorizationStatus)> completion) override
    {
        m_effects.add("prompt");
        m_target.requestTrackingAuthorization(std::move(completion));
    }

private:
    platform::ATTrackingManager& m_target;
    Effects& m_effects;
};

/// The running app, which reports what the SDK asks the system to open.
class WatchedUIApplication final : public platform::UIApplication {
public:
    WatchedUIApplication(platform::UIApplication& target, Effects& effects) : m_target(target), m_effects(effects) { }

    // platform::UIApplication
    [[nodiscard]] platform::UIApplicationState applicationState() const override { return m_target.applicationState(); }
    [[nodiscard]] bool canOpenURL(platform::URL const& url) const override { return m_target.canOpenURL(url); }
    void open(platform::URL const& url) override
    {
        m_effects.add("open " + url.absoluteString());
        m_target.open(url);
    }

private:
    platform::UIApplication& m_target;
    Effects& m_effects;
};

/// The platform in memory, with everything that the SDK does to it written down as effects.
class SimulatedPlatform final : public memory::ForwardingPlatform {
public:
    /// `preferences` takes the place of those in memory, unless it is nullptr.
    SimulatedPlatform(memory::Options options, platform::UserDefaults* preferences);

    memory::Platform& memory;
    Effects effects;

    /// The preferences as they are, unwatched.
    [[nodiscard]] platform::UserDefaults& preferences() const { return m_preferences; }
    /// Blocks of the SDK only, not the platform's own.
    BlockHandler willRunBlock;

    /// Every system web view so far, in the order in which they were made.
    [[nodiscard]] std::vector<std::weak_ptr<memory::WebView>> const& webViews() const { return m_webViews; }

    // platform::Platform
    [[nodiscard]] WatchedUserDefaults& standardUserDefaults() override { return m_userDefaults; }
    [[nodiscard]] WatchedURLSession& urlSession() override { return m_urlSession; }
    [[nodiscard]] NumberedQueue& mainQueue() override { return m_mainQueue; }
    [[nodiscard]] NumberedQueue& globalQueue() override { return m_globalQueue; }
    [[nodiscard]] WatchedTrackingManager& trackingManager() override { return m_trackingManager; }
    [[nodiscard]] WatchedUIApplication& application() override { return m_application; }
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override;
    [[nodiscard]] std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override;

private:
    void collect();
    void collectPage(std::size_t number, memory::WebView const& page);

    struct Seen {
        std::size_t evaluated = 0;
        std::size_t decided = 0;
    };

    std::size_t m_lastBlock = 0;
    platform::UserDefaults& m_preferences;
    WatchedUserDefaults m_userDefaults;
    WatchedURLSession m_urlSession;
    NumberedQueue m_mainQueue;
    NumberedQueue m_globalQueue;
    WatchedTrackingManager m_trackingManager;
    WatchedUIApplication m_application;
    std::vector<std::weak_ptr<memory::WebView>> m_webViews;
    std::vector<Seen> m_seen;
    std::vector<std::unique_ptr<platform::NSKeyValueObservation>> m_observations;
    std::size_t m_seenTransitions = 0;
};

/// A request in one line.
[[nodiscard]] std::string describe(platform::URLRequest const& request);

/// Where the simulated service is.
[[nodiscard]] platform::ServiceAddresses const& addresses();

}
