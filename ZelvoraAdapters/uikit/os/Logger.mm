#include "ZelvoraAdapters/uikit/os/Logger.h"

namespace zelvora::uikit {

Logger::Logger(std::string const& subsystem, std::string const& category)
    : m_log(os_log_create(subsystem.c_str(), category.c_str()))
{
}

bool Logger::isEnabled(platform::OSLogType type) const
{
    return os_log_type_enabled(m_log, static_cast<os_log_type_t>(type));
}

void Logger::log(platform::OSLogType type, std::string const& message)
{
    os_log_with_type(m_log, static_cast<os_log_type_t>(type), "[ZelvoraSDK] %s", message.c_str());
}

}
