#include "ZelvoraAdapters/uikit/os/Logger.h"
#include "ZelvoraContract/LoggerContract.h"
#include "tests/uikit/doubles/Log.h"

namespace zelvora::tests {

namespace {

class PhoneLog final {
public:
    PhoneLog() { doubles::clearLog(); }

    std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category)
    {
        return std::make_unique<uikit::Logger>(subsystem, category);
    }
    std::vector<LogEntry> entries()
    {
        std::vector<LogEntry> entries;
        for (auto const& entry : doubles::logEntries())
            entries.push_back({ static_cast<platform::OSLogType>(entry.type), entry.text });
        return entries;
    }
    void setDebugEnabled(bool enabled) { doubles::setDebugLogged(enabled); }
    // The format's "%s" ends there.
    std::string kept(std::string const& message) { return message.substr(0, message.find('\0')); }
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, LoggerContract, PhoneLog);

}
