#include "ZelvoraAdapters/memory/os/Logger.h"

#include "ZelvoraAdapters/memory/os/Log.h"

namespace zelvora::memory {

Logger::Logger(Log& log, std::string const& subsystem, std::string const& category) : m_log(log)
{
    m_log.add(Log::Handle { subsystem, category });
}

bool Logger::isEnabled(platform::OSLogType type) const
{
    return m_log.isEnabled(type);
}

void Logger::log(platform::OSLogType type, std::string const& message)
{
    m_log.add(Log::Line { type, "[ZelvoraSDK] " + message });
}

}
