#pragma once

#include <map>
#include <string>

namespace zelvora::examples {

/// What this process and its children use of the system now, by /proc.
struct Usage {
    /// Memory of its own: pages that no file backs, those shared with other processes in proportion. What the allocator
    /// holds without need is given back first.
    long memoryKiB = 0;
    long residentKiB = 0;
    int descriptors = 0;
    int threads = 0;
    /// Children and their children, the web processes among them.
    int processes = 0;
    int webProcesses = 0;
};

[[nodiscard]] Usage measureUsage();

/// How many descriptors there are of each kind, threads of each name and children of each name.
[[nodiscard]] std::map<std::string, int> usageByName();

}
