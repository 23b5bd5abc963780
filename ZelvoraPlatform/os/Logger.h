#pragma once

#include "ZelvoraPlatform/Export.h"

#include <cstdint>
#include <string>

namespace zelvora::platform {

/// The system log's types, with the phone's raw values.
enum class OSLogType : std::uint8_t { Default = 0, Info = 1, Debug = 2, Error = 16, Fault = 17 };

/// A handle of the system log for one subsystem and category. Any thread.
class ZELVORA_API Logger {
public:
    virtual ~Logger() = default;

    [[nodiscard]] virtual bool isEnabled(OSLogType type) const = 0;

    /// Emits one entry with the format "[ZelvoraSDK] %s" and the message as its only argument, at the system's default
    /// privacy. The format is the interface's because the phone's log takes only a literal.
    virtual void log(OSLogType type, std::string const& message) = 0;
};

}
