// The cost of storing a value and an event, compared with one write(2) of the same bytes and with SQLite.

#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "bench/Comparison.h"
#include "bench/JournalQueue.h"
#include "bench/SQLiteQueue.h"
#include "bench/SQLiteStore.h"
#include "bench/WriteFloor.h"
#include "bench/makeEvent.h"
#include "bench/reportJournalError.h"
#include "tests/support/TemporaryDirectory.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace {

using namespace zelvora;
using bench::Comparison;
using bench::JournalQueue;
using bench::makeEvent;
using bench::SQLiteQueue;
using bench::SQLiteStore;
using bench::WriteFloor;
using platform::Array;
using platform::Value;
using shared::JournaledUserDefaults;

constexpr std::size_t few = 100;
constexpr std::size_t many = 100'000;
constexpr char const* eventsKey = "events";

void enqueue(JournaledUserDefaults& store, std::size_t count)
{
    Array events;
    for (std::size_t i = 0; i < count; ++i)
        events = events.appending(makeEvent(i));
    store.setObject(events, eventsKey);
}

std::size_t bytesOfSetting(JournaledUserDefaults& store, std::filesystem::path const& file, std::string const& value)
{
    store.setObject("another", "key");
    auto const before = std::filesystem::file_size(file);
    store.setObject(value, "key");
    return std::filesystem::file_size(file) - before;
}

void measureSet(std::filesystem::path const& folder)
{
    auto const file = folder / "set.journal";
    JournaledUserDefaults store(file, &bench::reportJournalError);
    JournaledUserDefaults fewQueued(folder / "set-few.journal", &bench::reportJournalError);
    enqueue(fewQueued, few);
    JournaledUserDefaults manyQueued(folder / "set-many.journal", &bench::reportJournalError);
    enqueue(manyQueued, many);
    SQLiteStore sqlite(folder / "set.sqlite");
    std::string value(100, 'v');
    WriteFloor const floor(folder / "set.floor", bytesOfSetting(store, file, value));

    // Every call changes the value: an equal value would not be written.
    auto change = [&, number = 0]() mutable -> std::string const& {
        return value.replace(0, 8, std::to_string(10'000'000 + ++number));
    };
    // Values made beforehand, because making them is not the store's cost.
    std::array<Value, 2> const ready { change(), change() };
    auto next = [&ready, number = 0U]() mutable -> Value const& { return ready.at(++number % ready.size()); };
    auto const set = [&] { store.setObject(next(), "key"); };
    auto const setMade = [&] { store.setObject(change(), "key"); };
    auto const setFewQueued = [&] { fewQueued.setObject(next(), "key"); };
    auto const setManyQueued = [&] { manyQueued.setObject(next(), "key"); };
    auto const setSQLite = [&] { sqlite.set("key", change()); };
    Comparison const comparison(401, 50);
    comparison.print("set of 100 bytes in the journal", set, "one write(2)", std::ref(floor));
    comparison.print("set of 100 bytes, the value made each time", setMade, "one write(2)", std::ref(floor));
    comparison.print("set with 100 queued events", setFewQueued, "one write(2)", std::ref(floor));
    comparison.print("set with 100,000 queued events", setManyQueued, "one write(2)", std::ref(floor));
    comparison.print("set with 100,000 queued events", setManyQueued, "with 100", setFewQueued);
    comparison.print("set of 100 bytes in SQLite, WAL", setSQLite, "one write(2)", std::ref(floor));
    comparison.print("set of 100 bytes in SQLite, WAL", setSQLite, "the journal", set);
}

void measureQueue(std::filesystem::path const& folder)
{
    JournalQueue shortQueue(folder / "short.journal");
    shortQueue.fill(few);
    JournalQueue longQueue(folder / "long.journal");
    longQueue.fill(many);
    SQLiteQueue shortTable(folder / "short.sqlite");
    shortTable.fill(few);
    SQLiteQueue longTable(folder / "long.sqlite");
    longTable.fill(many);
    auto const bytes = longQueue.bytesOfAppending();
    std::fprintf(stderr, "  (an event takes %zu bytes in the journal)\n", bytes);
    WriteFloor const floor(folder / "queue.floor", bytes);

    std::fprintf(stderr, "  (every line below adds about 8,000 events to the queues that it measures)\n");
    Comparison const comparison(401, 20);
    auto const appendLong = [&] { longQueue.append(); };
    auto const appendShort = [&] { shortQueue.append(); };
    auto const appendShortTable = [&] { shortTable.append(); };
    auto const appendLongTable = [&] { longTable.append(); };
    comparison.print("append to 100 events in the journal", appendShort, "one write(2)", std::ref(floor));
    comparison.print("append to 100,000 events in the journal", appendLong, "one write(2)", std::ref(floor));
    comparison.print("append to 100,000 events", appendLong, "append to 100", appendShort);
    comparison.print("append to 100 rows in SQLite, WAL", appendShortTable, "one write(2)", std::ref(floor));
    comparison.print("append to 100,000 rows in SQLite, WAL", appendLongTable, "one write(2)", std::ref(floor));
    comparison.print("append to 100,000 rows", appendLongTable, "append to 100", appendShortTable);
    comparison.print("append to 100,000 rows in SQLite, WAL", appendLongTable, "the journal", appendLong);

    // The drops shrink the queue to about half. Their cost depends only on the number of events that are dropped.
    Comparison const drops(51, 2);
    drops.print("drop 500 of 100,000 events", [&] { longQueue.dropFirst(500); }, "append to 100,000", appendLong);
}

}

int main()
{
    tests::TemporaryDirectory const folder;
    std::fprintf(stderr, "Storage (medians of ratios; in brackets the middle half)\n");
    measureSet(folder.path());
    measureQueue(folder.path());
    return EXIT_SUCCESS;
}
