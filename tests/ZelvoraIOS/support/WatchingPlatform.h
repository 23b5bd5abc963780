#pragma once

#include "ZelvoraAdapters/memory/ForwardingUserDefaults.h"
#include "tests/ZelvoraIOS/support/ForwardingPlatform.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace zelvora::tests {

/// A platform in memory that calls watchers at each log line, each value read or stored and each use of the bundle, for
/// tests of an order of steps that the outcome does not show.
class WatchingPlatform final : public ForwardingPlatform {
public:
    using Watcher = std::function<void(std::string const&)>;

    using ForwardingPlatform::ForwardingPlatform;

    /// Called with the message of each line, before it is logged.
    void watchLog(Watcher watcher) { m_logWatcher = std::move(watcher); }
    /// Called with the full key of each value, before it is stored.
    void watchStoring(Watcher watcher) { m_storingWatcher = std::move(watcher); }
    /// Called with the full key of each value, after it was stored and within the call that stored it.
    void watchStored(Watcher watcher) { m_storedWatcher = std::move(watcher); }
    /// Called with the full key of each value, after it was read and before it is returned.
    void watchReading(Watcher watcher) { m_readingWatcher = std::move(watcher); }
    void watchBundle(std::function<void()> watcher) { m_bundleWatcher = std::move(watcher); }
    /// How often the SDK asked the platform for the preferences.
    [[nodiscard]] std::size_t preferencesCount() const { return m_preferencesCount; }

    // platform::Platform
    [[nodiscard]] platform::Bundle& mainBundle() override
    {
        if (m_bundleWatcher)
            m_bundleWatcher();
        return memory.mainBundle();
    }
    [[nodiscard]] platform::UserDefaults& standardUserDefaults() override
    {
        ++m_preferencesCount;
        return m_preferences;
    }
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override
    {
        return std::make_unique<WatchedLogger>(memory.makeLogger(subsystem, category), m_logWatcher);
    }

private:
    class WatchedLogger final : public platform::Logger {
    public:
        WatchedLogger(std::unique_ptr<platform::Logger> logger, Watcher const& watcher)
            : m_logger(std::move(logger))
            , m_watcher(watcher)
        {
        }

        // platform::Logger
        [[nodiscard]] bool isEnabled(platform::OSLogType type) const override { return m_logger->isEnabled(type); }
        void log(platform::OSLogType type, std::string const& message) override
        {
            if (m_watcher)
                m_watcher(message);
            m_logger->log(type, message);
        }

    private:
        std::unique_ptr<platform::Logger> m_logger;
        Watcher const& m_watcher;
    };

    class WatchedPreferences final : public memory::ForwardingUserDefaults {
    public:
        WatchedPreferences(platform::UserDefaults& preferences, Watcher const& readingWatcher,
            Watcher const& storingWatcher, Watcher const& storedWatcher)
            : ForwardingUserDefaults(preferences)
            , m_readingWatcher(readingWatcher)
            , m_storingWatcher(storingWatcher)
            , m_storedWatcher(storedWatcher)
        {
        }

        // platform::UserDefaults
        [[nodiscard]] std::optional<platform::Value> object(std::string const& key) override
        {
            auto value = ForwardingUserDefaults::object(key);
            if (m_readingWatcher)
                m_readingWatcher(key);
            return value;
        }
        void setObject(std::optional<platform::Value> value, std::string const& key) override
        {
            if (m_storingWatcher)
                m_storingWatcher(key);
            ForwardingUserDefaults::setObject(std::move(value), key);
            if (m_storedWatcher)
                m_storedWatcher(key);
        }

    private:
        Watcher const& m_readingWatcher;
        Watcher const& m_storingWatcher;
        Watcher const& m_storedWatcher;
    };

    Watcher m_logWatcher;
    Watcher m_readingWatcher;
    Watcher m_storingWatcher;
    Watcher m_storedWatcher;
    std::function<void()> m_bundleWatcher;
    std::size_t m_preferencesCount = 0;
    WatchedPreferences m_preferences { memory.standardUserDefaults(), m_readingWatcher, m_storingWatcher,
        m_storedWatcher };
};

}
