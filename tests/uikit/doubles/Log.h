#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The unified log, kept in memory. Any thread.
namespace zelvora::doubles {

struct LogEntry {
    std::string subsystem;
    std::string category;
    std::uint8_t type = 0;
    std::string text;
};

[[nodiscard]] std::vector<LogEntry> logEntries();
void clearLog();
/// Debug entries are off at first, as on a phone.
void setDebugLogged(bool isLogged);

}
