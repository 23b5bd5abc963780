#include "examples/driving/ChildProcesses.h"

#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <fstream>

namespace zelvora::examples {

namespace {

namespace fs = std::filesystem;

bool readProcess(fs::path const& folder, Process& process)
{
    std::string line;
    std::ifstream stream(folder / "stat");
    std::getline(stream, line);
    // The name is in parentheses and may contain some itself.
    auto const open = line.find('(');
    auto const close = line.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close + 4 > line.size() || line[close + 2] == 'Z')
        return false;
    process.name = line.substr(open + 1, close - open - 1);
    auto const* const end = line.data() + line.size();
    return std::from_chars(line.data(), end, process.id).ec == std::errc()
        && std::from_chars(line.data() + close + 4, end, process.parent).ec == std::errc();
}

std::vector<Process> allProcesses()
{
    std::vector<Process> processes;
    std::error_code failure;
    // Processes may end while they are listed.
    for (fs::directory_iterator entry("/proc", failure), end; !failure && entry != end; entry.increment(failure)) {
        Process process;
        if (readProcess(entry->path(), process))
            processes.push_back(process);
    }
    return processes;
}

}

std::vector<Process> childProcesses()
{
    auto const all = allProcesses();
    std::vector<Process> found;
    std::vector<pid_t> parents { getpid() };
    while (!parents.empty()) {
        auto const parent = parents.back();
        parents.pop_back();
        for (auto const& process : all) {
            if (process.parent != parent)
                continue;
            found.push_back(process);
            parents.push_back(process.id);
        }
    }
    return found;
}

bool isWebProcess(Process const& process)
{
    return process.name == "WebKitWebProces";
}

std::vector<pid_t> webProcesses()
{
    std::vector<pid_t> found;
    for (auto const& process : childProcesses()) {
        if (isWebProcess(process))
            found.push_back(process.id);
    }
    return found;
}

}
