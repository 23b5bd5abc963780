#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/os/Logger.h"

#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::memory {

/// The system log, recorded as lines. Every type is enabled until it is disabled. Any thread. The log outlives the
/// loggers that it makes.
class ZELVORA_API Log final {
public:
    /// One entry of the log.
    struct Line {
        /// The type that it was logged with.
        platform::OSLogType type = platform::OSLogType::Default;
        /// As the system log shows it: "[ZelvoraSDK] " and the message.
        std::string text;

        bool operator==(Line const&) const = default;
    };
    /// What a logger was made for.
    struct Handle {
        /// As given to `makeLogger`.
        /// @{
        std::string subsystem;
        std::string category;
        /// @}

        bool operator==(Handle const&) const = default;
    };

    /// Every entry since the log was cleared last.
    [[nodiscard]] std::vector<Line> lines() const;
    /// Whether a line of this type is exactly this message (without the prefix).
    [[nodiscard]] bool holds(platform::OSLogType type, std::string_view message) const;
    /// Forgets the lines so far, but not the loggers.
    void clear();

    /// What `isEnabled` of every logger answers. The SDK does not log what is disabled; what is logged all the same is
    /// kept.
    void setEnabled(platform::OSLogType type, bool enabled);

    /// What loggers were made for, in order.
    [[nodiscard]] std::vector<Handle> loggersMade() const;

    /// For the adapter itself.
    /// @{
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const;
    void add(Line line);
    void add(Handle handle);
    /// @}

private:
    std::mutex mutable m_mutex;
    std::vector<Line> m_lines;
    std::set<platform::OSLogType> m_disabled;
    std::vector<Handle> m_loggersMade;
};

}
