#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileDescriptor.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace zelvora::tests {

/// A program started by a test, which talks to it through standard input and output. Killed by the destructor.
class ChildProcess final {
public:
    explicit ChildProcess(std::vector<std::string> arguments);
    ~ChildProcess();
    ChildProcess(ChildProcess const&) = delete;
    ChildProcess& operator=(ChildProcess const&) = delete;

    /// Writes the line and a line feed to the child's standard input.
    void send(std::string const& line);
    /// The next line that it writes; empty if it ended or wrote nothing for half a minute.
    [[nodiscard]] std::string readLine();
    /// Sends a line and returns the next line of output.
    [[nodiscard]] std::string ask(std::string const& line);
    /// At least one byte, at most `count`; empty if it ended or wrote nothing for half a minute.
    [[nodiscard]] std::string readSome(std::size_t count);

    void signal(int number) const;
    /// Waits until it stops or ends. Returns the status of waitpid.
    int waitForChange();
    /// Sends SIGKILL and waits for the end.
    void kill();

private:
    ::pid_t m_process = -1;
    shared::FileDescriptor m_input;
    shared::FileDescriptor m_output;
};

}
