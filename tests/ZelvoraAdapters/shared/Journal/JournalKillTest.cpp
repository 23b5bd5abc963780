#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraContract/support/Record.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "tests/ZelvoraAdapters/shared/Journal/JournalHistory.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/makeSeed.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <map>
#include <random>
#include <set>

namespace zelvora::tests {

namespace {

constexpr int kills = 500;

// The numbers of the steps that a process reports as done.
class Acknowledgements final {
public:
    explicit Acknowledgements(std::uint64_t first) : m_next(first) { }

    // False when the process has ended.
    bool readSome(ChildProcess& process)
    {
        auto const bytes = process.readSome(4'096);
        m_bytes += bytes;
        while (m_bytes.size() >= sizeof m_next) {
            std::uint64_t number = 0;
            std::memcpy(&number, m_bytes.data(), sizeof number);
            m_bytes.erase(0, sizeof number);
            EXPECT_EQ(number, m_next);
            m_next = number + 1;
        }
        return !bytes.empty();
    }
    // The first step that was not reported.
    [[nodiscard]] std::uint64_t next() const { return m_next; }

private:
    std::uint64_t m_next;
    std::string m_bytes;
};

}

TEST(JournalKillTest, AProcessThatIsKilledLosesNothingThatItAcknowledged)
{
    auto const seed = makeSeed();
    std::mt19937_64 random { seed };
    TemporaryDirectory const directory;
    auto const path = (directory / "preferences").string();
    JournalHistory const history { seed };
    JournalHistory::State expected;
    std::uint64_t next = 0;
    int inFlightKept = 0;
    std::set<::ino_t> files;
    Record<std::string> log;
    for (int kill = 0; kill < kills; ++kill) {
        Acknowledgements acknowledgements { next };
        ChildProcess process { { ZELVORA_JOURNAL_PROCESS, "run", path, std::to_string(seed), std::to_string(next) } };
        // Some are killed while they open the file, most in the middle of writing.
        auto const enough = next + random() % 120;
        while (acknowledgements.next() < enough)
            ASSERT_TRUE(acknowledgements.readSome(process));
        process.kill();
        while (acknowledgements.readSome(process)) { }

        for (; next < acknowledgements.next(); ++next)
            history.takeStep(next, expected);
        shared::JournaledUserDefaults store { path, [&](std::string const& line) { log.add(line); } };
        auto const found = JournalHistory::stateOf(store);
        if (found != expected) {
            // The step in flight may have been written without being reported.
            history.takeStep(next, expected);
            ++next;
            ++inFlightKept;
            ASSERT_EQ(found, expected) << "after kill " << kill << ", step " << next;
        }
        struct ::stat status {};
        ASSERT_EQ(::stat(path.c_str(), &status), 0);
        files.insert(status.st_ino);
    }
    std::printf("%llu steps, %d of %d kills kept the step in flight, %zu cut half a record, at least %zu compactions\n",
        static_cast<unsigned long long>(next), inFlightKept, kills, log.size(), files.size() - 1);
    // Some kills hit a write in flight, and several compactions replaced the file.
    EXPECT_GT(inFlightKept, 0);
    EXPECT_GT(files.size(), 5U);
}

TEST(JournalKillTest, TwoProcessesThatWriteAtTheSameTimeAndAreKilledLoseNothingThatTheyAcknowledged)
{
    std::mt19937_64 random { makeSeed() };
    TemporaryDirectory const directory;
    auto const path = (directory / "preferences").string();
    Record<std::string> log;
    std::map<std::string, std::uint64_t> next { { "a", 0 }, { "b", 0 } };
    for (int kill = 0; kill < kills / 5; ++kill) {
        std::map<std::string, Acknowledgements> acknowledgements;
        std::map<std::string, ChildProcess> processes;
        for (auto const& [key, first] : next) {
            acknowledgements.emplace(key, first);
            processes.try_emplace(
                key, std::vector<std::string> { ZELVORA_JOURNAL_PROCESS, "queue", path, key, std::to_string(first) });
        }
        // The other one goes on while the first is killed.
        for (auto& [key, process] : processes) {
            auto& acknowledged = acknowledgements.at(key);
            auto const enough = next[key] + random() % 300;
            while (acknowledged.next() < enough)
                ASSERT_TRUE(acknowledged.readSome(process));
            process.kill();
            while (acknowledged.readSome(process)) { }
        }
        shared::JournaledUserDefaults store { path, [&](std::string const& line) { log.add(line); } };
        for (auto& [key, number] : next) {
            auto const acknowledged = acknowledgements.at(key).next();
            auto const found = store.object(key).value_or(platform::Array {});
            ASSERT_TRUE(found.array());
            // The step in flight may have been written without being reported.
            auto const size = found.array()->size();
            number = size == 0 ? 0 : static_cast<std::uint64_t>(*found.array()->at(size - 1).number()) + 1;
            ASSERT_TRUE(number == acknowledged || number == acknowledged + 1) << "after kill " << kill;
            for (std::size_t i = 0; i < size; ++i)
                ASSERT_EQ(found.array()->at(i), platform::Value { number - size + i });
        }
    }
    std::printf("%llu and %llu steps, %zu lines were logged\n", static_cast<unsigned long long>(next["a"]),
        static_cast<unsigned long long>(next["b"]), log.size());
}

}
