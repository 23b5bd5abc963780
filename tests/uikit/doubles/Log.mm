#include "tests/uikit/doubles/Log.h"

#include <os/log.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <mutex>

struct os_log_s {
    std::string subsystem;
    std::string category;
};

namespace zelvora::doubles {

namespace {

std::mutex s_mutex;
std::vector<LogEntry> s_entries;
std::atomic<bool> s_isDebugLogged = false;

}

std::vector<LogEntry> logEntries()
{
    std::scoped_lock const lock(s_mutex);
    return s_entries;
}

void clearLog()
{
    std::scoped_lock const lock(s_mutex);
    s_entries.clear();
}

void setDebugLogged(bool isLogged)
{
    s_isDebugLogged = isLogged;
}

}

extern "C" {

// Never destroyed, as the system's.
os_log_t os_log_create(char const* subsystem, char const* category)
{
    static auto& logs = *new std::vector<os_log_t>;
    std::scoped_lock const lock(zelvora::doubles::s_mutex);
    for (auto* log : logs) {
        if (log->subsystem == subsystem && log->category == category)
            return log;
    }
    logs.push_back(new os_log_s { subsystem, category });
    return logs.back();
}

bool os_log_type_enabled(os_log_t, os_log_type_t type)
{
    return type != OS_LOG_TYPE_DEBUG || zelvora::doubles::s_isDebugLogged;
}

void zelvora_double_os_log(os_log_t log, os_log_type_t type, char const* format, ...)
{
    if (!os_log_type_enabled(log, type))
        return;
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    std::string text(static_cast<std::size_t>(std::vsnprintf(nullptr, 0, format, arguments)) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, again);
    va_end(again);
    va_end(arguments);
    text.pop_back();
    std::scoped_lock const lock(zelvora::doubles::s_mutex);
    zelvora::doubles::s_entries.push_back({ log->subsystem, log->category, type, std::move(text) });
}
}
