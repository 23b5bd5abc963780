#include "ZelvoraAdapters/memory/os/Log.h"

#include <algorithm>
#include <utility>

namespace zelvora::memory {

class Log::LoggerOfLog final : public platform::Logger {
public:
    explicit LoggerOfLog(Log& log) : m_log(log) { }

    // platform::Logger
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const override
    {
        std::scoped_lock const lock(m_log.m_mutex);
        return !m_log.m_disabled.contains(type);
    }
    void log(platform::OSLogType type, std::string const& message) override
    {
        std::scoped_lock const lock(m_log.m_mutex);
        m_log.m_lines.push_back({ type, "[ZelvoraSDK] " + message });
    }

private:
    Log& m_log;
};

std::vector<Log::Line> Log::lines() const
{
    std::scoped_lock const lock(m_mutex);
    return m_lines;
}

bool Log::holds(platform::OSLogType type, std::string_view message) const
{
    std::scoped_lock const lock(m_mutex);
    Line const line { type, std::string("[ZelvoraSDK] ").append(message) };
    return std::ranges::find(m_lines, line) != m_lines.end();
}

void Log::clear()
{
    std::scoped_lock const lock(m_mutex);
    m_lines.clear();
}

void Log::setEnabled(platform::OSLogType type, bool enabled)
{
    std::scoped_lock const lock(m_mutex);
    if (enabled)
        m_disabled.erase(type);
    else
        m_disabled.insert(type);
}

std::vector<Log::Handle> Log::loggersMade() const
{
    std::scoped_lock const lock(m_mutex);
    return m_loggersMade;
}

std::unique_ptr<platform::Logger> Log::makeLogger(std::string subsystem, std::string category)
{
    std::scoped_lock const lock(m_mutex);
    m_loggersMade.push_back({ std::move(subsystem), std::move(category) });
    return std::make_unique<LoggerOfLog>(*this);
}

}
