#include "ZelvoraAdapters/memory/os/Log.h"
#include "ZelvoraAdapters/memory/os/Logger.h"
#include "ZelvoraContract/LoggerContract.h"

namespace zelvora::tests {

namespace {

class MemoryLog final {
public:
    std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category)
    {
        return std::make_unique<memory::Logger>(m_log, subsystem, category);
    }
    std::vector<LogEntry> entries()
    {
        std::vector<LogEntry> entries;
        for (auto const& line : m_log.lines())
            entries.push_back({ line.type, line.text });
        return entries;
    }
    void setDebugEnabled(bool enabled) { m_log.setEnabled(platform::OSLogType::Debug, enabled); }
    std::string kept(std::string const& message) { return message; }

private:
    memory::Log m_log;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, LoggerContract, MemoryLog);

}
