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
    struct Line {
        platform::OSLogType type = platform::OSLogType::Default;
        /// As the system log shows it: "[ZelvoraSDK] " and the message.
        std::string text;

        bool operator==(Line const&) const = default;
    };
    struct Handle {
        std::string subsystem;
        std::string category;

        bool operator==(Handle const&) const = default;
    };

    [[nodiscard]] std::vector<Line> lines() const;
    /// Whether a line of this type is exactly this message (without the prefix).
    [[nodiscard]] bool holds(platform::OSLogType type, std::string_view message) const;
    void clear();

    void setEnabled(platform::OSLogType type, bool enabled);

    /// What loggers were made for, in order.
    [[nodiscard]] std::vector<Handle> loggersMade() const;

    /// For the adapter itself.
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const;
    void add(Line line);
    void add(Handle handle);

private:
    std::mutex mutable m_mutex;
    std::vector<Line> m_lines;
    std::set<platform::OSLogType> m_disabled;
    std::vector<Handle> m_loggersMade;
};

}
