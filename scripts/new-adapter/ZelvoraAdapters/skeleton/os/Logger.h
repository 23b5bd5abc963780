#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/os/Logger.h"

#include <string>

namespace zelvora::skeleton {

class Logger final : public platform::Logger {
public:
    Logger(std::string const& /*subsystem*/, std::string const& /*category*/) { }

    // platform::Logger
    [[nodiscard]] bool isEnabled(platform::OSLogType) const override { missing("Logger::isEnabled"); }
    void log(platform::OSLogType, std::string const&) override { missing("Logger::log"); }
};

}
