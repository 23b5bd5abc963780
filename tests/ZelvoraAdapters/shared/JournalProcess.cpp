// What the tests of several processes start. Either lives a made-up life and tells of each step that is done, or does
// what it is told on its standard input, a line each.

#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "tests/ZelvoraAdapters/shared/JournalHistory.h"

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
using zelvora::shared::JournalTuning;
using zelvora::tests::JournalHistory;

// Sends itself a signal when a part of the next write is done, which is in the middle of a turn.
class SignallingFileOperations final : public FileOperations {
public:
    enum class Moment : std::uint8_t { HalfWay, Behind };

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
        auto const part = m_moment == Moment::HalfWay ? count / 2 : count;
        auto const written = FileOperations::write(file, bytes, part, offset);
        ::raise(number);
        return written;
    }

private:
    std::atomic<Moment> m_moment = Moment::HalfWay;
    std::atomic<int> m_signal = 0;
};

void logLine(std::string const& line)
{
    std::fprintf(stderr, "%s\n", line.c_str());
}

int live(std::string const& path, std::uint64_t seed, std::uint64_t first)
{
    JournalTuning tuning;
    tuning.syncDelay = std::chrono::milliseconds(20);
    tuning.smallestCompaction = 8'192;
    JournaledUserDefaults store { path, logLine, tuning };
    JournalHistory const history { seed };
    for (auto number = first;; ++number) {
        history.takeStep(number, store);
        if (::write(STDOUT_FILENO, &number, sizeof number) != sizeof number)
            return 1;
    }
}

Array arrayIn(JournaledUserDefaults& store, std::string const& key)
{
    auto const value = store.object(key);
    return value && value->array() ? *value->array() : Array {};
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
        operations.signalInNextWrite(SIGKILL, SignallingFileOperations::Moment::HalfWay);
    else if (verb == "die-behind-next-write")
        operations.signalInNextWrite(SIGKILL, SignallingFileOperations::Moment::Behind);
    else if (verb == "stop-in-next-write")
        operations.signalInNextWrite(SIGSTOP, SignallingFileOperations::Moment::HalfWay);
    else
        return "what?";
    return "done";
}

int serve(std::string const& path)
{
    SignallingFileOperations operations;
    JournalTuning tuning;
    tuning.operations = &operations;
    tuning.syncDelay = std::chrono::hours(1);
    JournaledUserDefaults store { path, logLine, tuning };
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
    if (arguments.size() == 4 && arguments[0] == "live")
        return live(arguments[1], std::stoull(arguments[2]), std::stoull(arguments[3]));
    std::fprintf(stderr, "usage: serve PATH | live PATH SEED FIRST\n");
    return 2;
}
