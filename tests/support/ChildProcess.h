#pragma once

#include "ZelvoraAdapters/shared/Files/FileDescriptor.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace zelvora::tests {

/// A program that this test started, spoken to through its standard input and output. It is killed with this object.
class ChildProcess final {
public:
    explicit ChildProcess(std::vector<std::string> arguments);
    ~ChildProcess();
    ChildProcess(ChildProcess const&) = delete;
    ChildProcess& operator=(ChildProcess const&) = delete;

    void send(std::string const& line);
    /// What it writes next, up to the line's end; empty where it ended, or wrote none for half a minute.
    [[nodiscard]] std::string readLine();
    [[nodiscard]] std::string ask(std::string const& line);
    /// At least one byte, at most `count`; empty where it ended.
    [[nodiscard]] std::string readSome(std::size_t count);

    void signal(int number) const;
    /// Until it stopped or ended; the status is that of waitpid.
    int waitForChange();
    /// At once, with no chance to do anything about it.
    void kill();

private:
    ::pid_t m_process = -1;
    shared::FileDescriptor m_input;
    shared::FileDescriptor m_output;
};

}
