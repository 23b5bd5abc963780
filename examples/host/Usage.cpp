#include "examples/host/Usage.h"

#include "examples/driving/ChildProcesses.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

namespace zelvora::examples {

namespace {

namespace fs = std::filesystem;

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
    auto const children = childProcesses();
    return { .memoryKiB = memoryOf("Pss_Anon"),
        .residentKiB = memoryOf("Rss"),
        // One of them reads the list.
        .descriptors = static_cast<int>(entries("/proc/self/fd").size()) - 1,
        .threads = static_cast<int>(entries("/proc/self/task").size()),
        .processes = static_cast<int>(children.size()),
        .webProcesses = static_cast<int>(std::ranges::count_if(children, isWebProcess)) };
}

std::map<std::string, int> usageByName()
{
    std::map<std::string, int> counts;
    for (auto const& descriptor : entries("/proc/self/fd"))
        ++counts["descriptor " + kindOf(descriptor)];
    for (auto const& task : entries("/proc/self/task"))
        ++counts["thread " + firstLine(task / "comm")];
    for (auto const& process : childProcesses())
        ++counts["process " + process.name];
    return counts;
}

}
