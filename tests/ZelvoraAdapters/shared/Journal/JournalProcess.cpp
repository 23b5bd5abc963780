// The program that the tests of several processes start. It either runs a history or fills a queue and writes the
// number of each step when it is done, or obeys commands from standard input, one a line.

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalHistory.h"

#include <signal.h> // NOLINT(*-deprecated-headers): SIGKILL and raise as the system has them
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

namespace {

using zelvora::platform::Array;
using zelvora::platform::Value;
using zelvora::shared::FileOperations;
using zelvora::shared::JournaledUserDefaults;
using zelvora::shared::JournalOptions;
using zelvora::tests::JournalHistory;

// Sends itself a signal during or after the next write, while the journal holds its lock.
class SignallingFileOperations final : public FileOperations {
public:
    enum class Moment : std::uint8_t { Halfway, After };

    void signalInNextWrite(int number, Moment moment)
    {
        m_moment = moment;
        m_signal = number;
    }

    ::ssize_t write(int file, char const* bytes, std::size_t count, ::off_t offset) override
    {
        auto const number = m_signal.exchange(0);
        if (number == 0)
            return FileOperations::write(file, bytes, count, offset);
        auto const part = m_moment == Moment::Halfway ? count / 2 : count;
        auto const written = FileOperations::write(file, bytes, part, offset);
        ::raise(number);
        return written;
    }

private:
    std::atomic<Moment> m_moment = Moment::Halfway;
    std::atomic<int> m_signal = 0;
};

void logLine(std::string const& line)
{
    std::fprintf(stderr, "%s\n", line.c_str());
}

JournalOptions busyOptions()
{
    JournalOptions options;
    options.syncDelay = std::chrono::milliseconds(20);
    options.minimumCompactionSize = 8'192;
    return options;
}

bool report(std::uint64_t number)
{
    return ::write(STDOUT_FILENO, &number, sizeof number) == sizeof number;
}

Array arrayIn(JournaledUserDefaults& store, std::string const& key)
{
    auto const value = store.object(key);
    return value && value->array() ? *value->array() : Array {};
}

int runHistory(std::string const& path, std::uint64_t seed, std::uint64_t first)
{
    JournaledUserDefaults store { path, logLine, busyOptions() };
    JournalHistory const history { seed };
    for (auto number = first;; ++number) {
        history.takeStep(number, store);
        if (!report(number))
            return 1;
    }
}

// Appends one number after the other to a queue that keeps the last hundred.
int runQueue(std::string const& path, std::string const& key, std::uint64_t first)
{
    JournaledUserDefaults store { path, logLine, busyOptions() };
    for (auto number = first;; ++number) {
        auto const queue = arrayIn(store, key);
        auto const excess = queue.size() > 200 ? queue.size() - 100 : 0;
        store.setObject(Value(queue.droppingFirst(excess).appending(static_cast<double>(number))), key);
        if (!report(number))
            return 1;
    }
}

std::string obey(JournaledUserDefaults& store, SignallingFileOperations& operations, std::istream& words)
{
    std::string verb;
    std::string key;
    std::string argument;
    words >> verb >> key >> argument;
    if (verb == "set")
        store.setObject(Value { argument }, key);
    else if (verb == "remove")
        store.removeObject(key);
    else if (verb == "append")
        store.setObject(Value(arrayIn(store, key).appending(argument)), key);
    else if (verb == "drop")
        store.setObject(Value(arrayIn(store, key).droppingFirst(std::stoul(argument))), key);
    else if (verb == "get")
        return debugDescription(store.object(key));
    else if (verb == "die-in-next-write")
        operations.signalInNextWrite(SIGKILL, SignallingFileOperations::Moment::Halfway);
    else if (verb == "die-after-next-write")
        operations.signalInNextWrite(SIGKILL, SignallingFileOperations::Moment::After);
    else if (verb == "stop-in-next-write")
        operations.signalInNextWrite(SIGSTOP, SignallingFileOperations::Moment::Halfway);
    else
        return "unknown command";
    return "done";
}

int serve(std::string const& path)
{
    SignallingFileOperations operations;
    JournalOptions options;
    options.fileOperations = &operations;
    options.syncDelay = std::chrono::hours(1);
    JournaledUserDefaults store { path, logLine, options };
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words { line };
        std::cout << obey(store, operations, words) << std::endl;
    }
    return 0;
}

}

int main(int argc, char** argv)
{
    std::vector<std::string> const arguments(argv + 1, argv + argc);
    if (arguments.size() == 2 && arguments[0] == "serve")
        return serve(arguments[1]);
    if (arguments.size() == 4 && arguments[0] == "run")
        return runHistory(arguments[1], std::stoull(arguments[2]), std::stoull(arguments[3]));
    if (arguments.size() == 4 && arguments[0] == "queue")
        return runQueue(arguments[1], arguments[2], std::stoull(arguments[3]));
    std::fprintf(stderr, "usage: serve PATH | run PATH SEED FIRST | queue PATH KEY FIRST\n");
    return 2;
}
