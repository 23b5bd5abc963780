#include "ZelvoraAdapters/skeleton/os/Logger.h"

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraContract/LoggerContract.h"

namespace zelvora::tests {

namespace {

using skeleton::missing;

class SkeletonLog final {
public:
    std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category)
    {
        return std::make_unique<skeleton::Logger>(subsystem, category);
    }
    std::vector<LogEntry> entries() { missing("SkeletonLog::entries"); }
    void setDebugEnabled(bool) { missing("SkeletonLog::setDebugEnabled"); }
    std::string kept(std::string const& message) { return message; }
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonLogger, LoggerContract, SkeletonLog);

}
