#include "tests/support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h> // NOLINT(*-deprecated-headers): kill is not in <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace zelvora::tests {

namespace {

constexpr int readTimeout = 30'000;

struct Pipe {
    Pipe()
    {
        std::array<int, 2> ends {};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("cannot make a pipe");
        out = shared::FileDescriptor { ends[0] };
        in = shared::FileDescriptor { ends[1] };
    }
    shared::FileDescriptor out;
    shared::FileDescriptor in;
};

}

ChildProcess::ChildProcess(std::vector<std::string> arguments)
{
    Pipe toChild;
    Pipe fromChild;
    std::vector<char*> pointers;
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    ::posix_spawn_file_actions_t actions {};
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, toChild.out.number(), STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, fromChild.in.number(), STDOUT_FILENO);
    auto const result = ::posix_spawn(&m_process, pointers[0], &actions, nullptr, pointers.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (result != 0)
        throw std::runtime_error("cannot start " + arguments[0]);
    m_input = std::move(toChild.in);
    m_output = std::move(fromChild.out);
}

ChildProcess::~ChildProcess()
{
    kill();
}

void ChildProcess::send(std::string const& line)
{
    auto const text = line + "\n";
    if (::write(m_input.number(), text.data(), text.size()) != static_cast<::ssize_t>(text.size()))
        throw std::runtime_error("cannot write to the child");
}

std::string ChildProcess::readLine()
{
    std::string line;
    for (;;) {
        auto const byte = readSome(1);
        if (byte.empty() || byte == "\n")
            return line;
        line += byte;
    }
}

std::string ChildProcess::ask(std::string const& line)
{
    send(line);
    return readLine();
}

std::string ChildProcess::readSome(std::size_t count)
{
    ::pollfd waiting { .fd = m_output.number(), .events = POLLIN, .revents = 0 };
    if (::poll(&waiting, 1, readTimeout) <= 0)
        return "";
    std::string bytes(count, '\0');
    auto const got = ::read(m_output.number(), bytes.data(), bytes.size());
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

void ChildProcess::signal(int number) const
{
    ::kill(m_process, number);
}

int ChildProcess::waitForChange()
{
    int status = 0;
    while (::waitpid(m_process, &status, WUNTRACED) < 0 && errno == EINTR) { }
    if (!WIFSTOPPED(status))
        m_process = -1;
    return status;
}

void ChildProcess::kill()
{
    if (m_process < 0)
        return;
    signal(SIGKILL);
    waitForChange();
    m_process = -1;
}

}
