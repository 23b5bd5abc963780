#include "examples/host/Usage.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>

namespace zelvora::examples {

namespace {

namespace fs = std::filesystem;

struct Process {
    pid_t id = 0;
    pid_t parent = 0;
    std::string name;
};

std::string firstLine(fs::path const& file)
{
    std::string line;
    std::ifstream stream(file);
    std::getline(stream, line);
    return line;
}

// Entries may go while they are listed.
std::vector<fs::path> entries(fs::path const& folder)
{
    std::vector<fs::path> found;
    std::error_code failure;
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure))
        found.push_back(entry->path());
    return found;
}

// A process that has ended and waits for its parent is not counted.
bool readProcess(fs::path const& folder, Process& process)
{
    auto const line = firstLine(folder / "stat");
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
    for (auto const& entry : entries("/proc")) {
        Process process;
        if (readProcess(entry, process))
            processes.push_back(process);
    }
    return processes;
}

std::vector<Process> descendants()
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
    // The system keeps fifteen letters of a name.
    return process.name == "WebKitWebProces";
}

long memoryOf(std::string const& field)
{
    std::ifstream stream("/proc/self/smaps_rollup");
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(field + ":"))
            return std::strtol(line.c_str() + field.size() + 1, nullptr, 10);
    }
    return 0;
}

// "socket:[123]" and "/memfd:name (deleted)" without what is different in each.
std::string kindOf(fs::path const& descriptor)
{
    std::error_code failure;
    auto const target = fs::read_symlink(descriptor, failure).string();
    return target.substr(0, target.find('['));
}

}

Usage measureUsage()
{
    malloc_trim(0);
    auto const children = descendants();
    return { .memoryKiB = memoryOf("Pss_Anon"),
        .residentKiB = memoryOf("Rss"),
        // One of them reads the list.
        .descriptors = static_cast<int>(entries("/proc/self/fd").size()) - 1,
        .threads = static_cast<int>(entries("/proc/self/task").size()),
        .processes = static_cast<int>(children.size()),
        .webProcesses = static_cast<int>(std::ranges::count_if(children, isWebProcess)) };
}

std::vector<pid_t> webProcesses()
{
    std::vector<pid_t> found;
    for (auto const& process : descendants()) {
        if (isWebProcess(process))
            found.push_back(process.id);
    }
    return found;
}

std::map<std::string, int> usageByName()
{
    std::map<std::string, int> counts;
    for (auto const& descriptor : entries("/proc/self/fd"))
        ++counts["descriptor " + kindOf(descriptor)];
    for (auto const& task : entries("/proc/self/task"))
        ++counts["thread " + firstLine(task / "comm")];
    for (auto const& process : descendants())
        ++counts["process " + process.name];
    return counts;
}

}
