#include "ZelvoraAdapters/abacus/os/Logger.h"

#include "ZelvoraContract/LoggerContract.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace zelvora::tests {

namespace {

class AbacusLog final {
public:
    AbacusLog() = default;
    AbacusLog(AbacusLog const&) = delete;
    AbacusLog& operator=(AbacusLog const&) = delete;
    ~AbacusLog() { std::fclose(m_stream); }

    std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category)
    {
        return std::make_unique<abacus::Logger>(subsystem, category, m_stream);
    }
    std::vector<LogEntry> entries()
    {
        std::rewind(m_stream);
        std::vector<LogEntry> entries;
        std::string line;
        for (int byte = std::fgetc(m_stream); byte != EOF; byte = std::fgetc(m_stream)) {
            if (byte != '\n') {
                line += static_cast<char>(byte);
                continue;
            }
            entries.push_back({ static_cast<platform::OSLogType>(std::stoi(line)), line.substr(line.find(' ') + 1) });
            line.clear();
        }
        return entries;
    }
    void setDebugEnabled(bool enabled)
    {
        if (enabled)
            ::setenv("ABACUS_DEBUG", "1", 1);
        else
            ::unsetenv("ABACUS_DEBUG");
    }
    // This log keeps an entry on one line.
    std::string kept(std::string message)
    {
        std::ranges::replace(message, '\n', ' ');
        return message;
    }

private:
    std::FILE* m_stream = std::tmpfile();
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(AbacusLogger, LoggerContract, AbacusLog);

}
