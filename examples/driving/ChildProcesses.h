#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace zelvora::examples {

struct Process {
    pid_t id = 0;
    pid_t parent = 0;
    /// The first fifteen letters of it.
    std::string name;
};

/// The processes that this process has started, and those that they have started, by /proc. One that has ended and
/// waits for its parent is none.
[[nodiscard]] std::vector<Process> childProcesses();

/// Whether pages run in it.
[[nodiscard]] bool isWebProcess(Process const& process);

/// The web processes that this process has started and that still run.
[[nodiscard]] std::vector<pid_t> webProcesses();

}
