#include "bench/JournalPlatform.h"

#include "bench/reportJournalError.h"

#include <cstdio>

namespace zelvora::bench {

namespace {

// As in a system's log, lower types are off and lines are not kept in memory.
class QuietLogger final : public platform::Logger {
public:
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const override
    {
        return type != platform::OSLogType::Debug && type != platform::OSLogType::Info;
    }
    void log(platform::OSLogType, std::string const& message) override
    {
        std::fprintf(stderr, "log: %s\n", message.c_str());
    }
};

}

JournalPlatform::JournalPlatform(std::string const& path)
    : ForwardingPlatform(std::make_unique<memory::Platform>())
    , m_userDefaults(path, &reportJournalError)
{
}

std::unique_ptr<platform::Logger> JournalPlatform::makeLogger(std::string const&, std::string const&)
{
    return std::make_unique<QuietLogger>();
}

}
