#pragma once

#include "ZelvoraPlatform/os/Logger.h"

#import <os/log.h>

namespace zelvora::uikit {

/// The unified system log. A message ends at its first NUL there, and the system shortens a long one.
class Logger final : public platform::Logger {
public:
    Logger(std::string const& subsystem, std::string const& category);

    // platform::Logger
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const override;
    void log(platform::OSLogType type, std::string const& message) override;

private:
    os_log_t m_log;
};

}
