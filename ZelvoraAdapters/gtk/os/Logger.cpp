#include "ZelvoraAdapters/gtk/os/Logger.h"

// The source location would always be this file.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <glib.h>
#include <syslog.h>
#include <systemd/sd-journal.h>

#include <array>
#include <sstream>
#include <string_view>

namespace zelvora::gtk {

namespace {

bool isDebugAskedFor(std::string_view subsystem)
{
    char const* const asked = g_getenv("G_MESSAGES_DEBUG");
    std::istringstream names(asked ? asked : "");
    for (std::string name; names >> name;) {
        if (name == "all" || name == subsystem)
            return true;
    }
    return false;
}

int priorityOf(platform::OSLogType type)
{
    switch (type) {
    case platform::OSLogType::Debug:
        return LOG_DEBUG;
    case platform::OSLogType::Info:
        return LOG_INFO;
    case platform::OSLogType::Error:
        return LOG_ERR;
    case platform::OSLogType::Fault:
        return LOG_CRIT;
    case platform::OSLogType::Default:
        break;
    }
    return LOG_NOTICE;
}

// The bytes are only read.
iovec field(std::string const& text)
{
    return { const_cast<char*>(text.data()), text.size() };
}

}

Logger::Logger(std::string const& subsystem, std::string const& category)
    : Logger(subsystem, category, sd_journal_sendv)
{
}

Logger::Logger(std::string const& subsystem, std::string const& category, Send send)
    : m_identifierField("SYSLOG_IDENTIFIER=" + subsystem)
    , m_subsystemField("SUBSYSTEM=" + subsystem)
    , m_categoryField("CATEGORY=" + category)
    , m_send(send)
    , m_isDebugEnabled(isDebugAskedFor(subsystem))
{
}

bool Logger::isEnabled(platform::OSLogType type) const
{
    return type != platform::OSLogType::Debug || m_isDebugEnabled;
}

void Logger::log(platform::OSLogType type, std::string const& message)
{
    if (!isEnabled(type))
        return;
    std::string const messageField = "MESSAGE=[ZelvoraSDK] " + message;
    std::string const priorityField = "PRIORITY=" + std::to_string(priorityOf(type));
    std::array const fields = { field(messageField), field(priorityField), field(m_identifierField),
        field(m_subsystemField), field(m_categoryField) };
    m_send(fields.data(), static_cast<int>(fields.size()));
}

}
