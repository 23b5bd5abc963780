#include "ZelvoraAdapters/memory/os/Log.h"

#include <algorithm>
#include <utility>

namespace zelvora::memory {

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

bool Log::isEnabled(platform::OSLogType type) const
{
    std::scoped_lock const lock(m_mutex);
    return !m_disabled.contains(type);
}

void Log::add(Line line)
{
    std::scoped_lock const lock(m_mutex);
    m_lines.push_back(std::move(line));
}

void Log::add(Handle handle)
{
    std::scoped_lock const lock(m_mutex);
    m_loggersMade.push_back(std::move(handle));
}

}
