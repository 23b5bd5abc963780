#pragma once

#include "ZelvoraPlatform/Export.h"

#include <cstdint>
#include <string>

namespace zelvora::platform {

/// The system log's types, with the phone's raw values.
enum class OSLogType : std::uint8_t { Default = 0, Info = 1, Debug = 2, Error = 16, Fault = 17 };

/// A handle to the system log for one subsystem and category. Any thread.
class ZELVORA_API Logger {
public:
    virtual ~Logger() = default;

    /// Whether the system wants entries of this type: `Debug` only if somebody asks for it, the others always. An
    /// adapter may look that up once, when the logger is made.
    [[nodiscard]] virtual bool isEnabled(OSLogType type) const = 0;

    /// Writes one entry with the format "[ZelvoraSDK] %s" and the message as its only argument, at the system's default
    /// privacy. The system may drop it if the type is not enabled. Failures are not reported. The format is part of
    /// this interface because the phone's log accepts only a literal.
    virtual void log(OSLogType type, std::string const& message) = 0;
};

}
