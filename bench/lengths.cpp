// What the length of the queue costs: saving an event, and opening the file until an upload has its events, for this
// store, for a row an event in SQLite and for one array that is rewritten. "lengths FOLDER" leaves there what
// lengths.gnuplot draws.

#include "bench/ArrayQueue.h"
#include "bench/Comparison.h"
#include "bench/Curves.h"
#include "bench/JournalQueue.h"
#include "bench/ReadFloor.h"
#include "bench/SQLiteQueue.h"
#include "bench/WriteFloor.h"
#include "bench/seconds.h"
#include "tests/support/TemporaryDirectory.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace zelvora;
using bench::Curves;
using bench::EventQueue;
using bench::seconds;

constexpr std::array<std::size_t, 9> lengths {
    100,
    300,
    1'000,
    3'000,
    10'000,
    30'000,
    100'000,
    300'000,
    1'000'000,
};
// What an upload takes.
constexpr std::size_t batch = 500;

struct Way {
    std::string name;
    // Empty if a pause makes no difference to what saving an event costs.
    std::string nameAfterPauses;
    std::function<std::unique_ptr<EventQueue>(std::filesystem::path const& file)> open;
};

template<typename Queue>
std::unique_ptr<EventQueue> open(std::filesystem::path const& file)
{
    return std::make_unique<Queue>(file);
}

void require(bool holds)
{
    if (holds)
        return;
    std::fprintf(stderr, "The events are not all there.\n");
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

// The unit of all figures, one write(2) of an event's bytes, and how long it took, for the plots' second axis.
class Unit final {
public:
    Unit(std::filesystem::path const& folder, std::size_t bytes) : m_floor(folder / "unit", bytes) { }

    double operator()()
    {
        // What ran before it has filled the caches with other things.
        (void)seconds(m_floor, 5);
        m_seconds.push_back(seconds(m_floor, 20));
        return m_seconds.back();
    }
    double afterPause() { return bench::secondsAfterPause(m_floor); }
    double median()
    {
        auto const middle = m_seconds.begin() + static_cast<std::ptrdiff_t>(m_seconds.size() / 2);
        std::ranges::nth_element(m_seconds, middle);
        return *middle;
    }

private:
    bench::WriteFloor m_floor;
    std::vector<double> m_seconds;
};

// As many rounds as a second has room for: what takes long has few.
Curves::Point measure(std::size_t length, std::function<double()> const& work, Unit& unit)
{
    constexpr std::size_t fewest = 5;
    constexpr std::size_t most = 201;
    auto const rounds = std::clamp(static_cast<std::size_t>(1 / work()), fewest, most);
    return {
        .length = length, .ratios = bench::Comparison(rounds, 1).measureTimes(work, std::ref(unit)), .rounds = rounds
    };
}

Curves::Point measureSaving(EventQueue& queue, std::size_t length, Unit& unit)
{
    auto const append = [&queue] { queue.append(); };
    constexpr double slow = 1e-3;
    std::size_t const repetitions = seconds(append) > slow ? 1 : 10;
    auto const saveSome = [&] {
        auto const duration = seconds(append, repetitions);
        // The queue is as long in each round.
        queue.dropFirst(repetitions);
        return duration;
    };
    return measure(length, saveSome, unit);
}

Curves::Point measureSavingAfterPauses(EventQueue& queue, std::size_t length, Unit& unit)
{
    auto const save = [&] {
        auto const duration = bench::secondsAfterPause([&queue] { queue.append(); });
        queue.dropFirst(1);
        return duration;
    };
    return measure(length, save, unit);
}

// Until an upload has its events. Closing is not counted.
double secondsToOpen(Way const& way, std::filesystem::path const& file, std::size_t length)
{
    std::unique_ptr<EventQueue> queue;
    return seconds([&] {
        queue = way.open(file);
        require(queue->first(batch).size() == std::min(batch, length));
    });
}

void fill(Way const& way, std::filesystem::path const& file, std::size_t length)
{
    auto const queue = way.open(file);
    queue->fill(length);
    require(queue->size() == length);
}

double secondsToReadWithSimdjson(std::filesystem::path const& file, std::size_t length)
{
    return seconds([&] {
        simdjson::dom::parser parser;
        require(parser.load(file).get_array().size() == length);
    });
}

// What reading costs at least, if the file has to be read.
void measureReading(Curves& opening, std::size_t length, Unit& unit)
{
    tests::TemporaryDirectory const folder;
    auto const text = folder / "text";
    bench::ArrayQueue(text).fill(length);
    bench::ReadFloor read(text);
    auto const readWithSimdjson = [&] { return secondsToReadWithSimdjson(text, length); };
    opening.add("as text, by simdjson", measure(length, readWithSimdjson, unit));
    opening.add("as text, one read(2)", measure(length, [&] { return seconds(read); }, unit));
}

std::size_t bytesOfAnEvent(std::filesystem::path const& folder)
{
    bench::JournalQueue queue(folder / "journal");
    queue.fill(100);
    return queue.bytesOfAppending();
}

}

int main(int argumentCount, char** arguments)
{
    std::filesystem::path const results = argumentCount == 2 ? arguments[1] : ".";
    tests::TemporaryDirectory const files;
    std::vector<Way> const ways {
        { "this store", "this store, after a pause", &open<bench::JournalQueue> },
        { "SQLite, a row an event", "SQLite, after a pause", &open<bench::SQLiteQueue> },
        { "one rewritten array", "", &open<bench::ArrayQueue> },
    };
    Unit unit(files.path(), bytesOfAnEvent(files.path()));
    Curves saving("saving an event, so many queued");
    Curves opening("opening, so many queued");
    std::fprintf(stderr, "The length of the queue (in times one write(2) of an event's bytes)\n");
    for (auto const length : lengths) {
        for (auto const& way : ways) {
            tests::TemporaryDirectory const folder;
            auto const file = folder / "queue";
            fill(way, file, length);
            auto const openAgain = [&] { return secondsToOpen(way, file, length); };
            opening.add(way.name, measure(length, openAgain, unit));
            auto const queue = way.open(file);
            saving.add(way.name, measureSaving(*queue, length, unit));
            if (!way.nameAfterPauses.empty())
                saving.add(way.nameAfterPauses, measureSavingAfterPauses(*queue, length, unit));
        }
        saving.add("one write(2), after a pause", measure(length, [&] { return unit.afterPause(); }, unit));
        measureReading(opening, length, unit);
    }
    saving.print();
    opening.print();
    saving.write(results / "saving.dat");
    opening.write(results / "opening.dat");
    std::ofstream file(results / "write.dat");
    file << unit.median() << '\n';
    return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
