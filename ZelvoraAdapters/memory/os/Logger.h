#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/os/Logger.h"

#include <string>

namespace zelvora::memory {

class Log;

/// Writes entries to a log.
class ZELVORA_API Logger final : public platform::Logger {
public:
    /// The log outlives the logger.
    Logger(Log& log, std::string const& subsystem, std::string const& category);

    // platform::Logger
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const override;
    void log(platform::OSLogType type, std::string const& message) override;

private:
    Log& m_log;
};

}
