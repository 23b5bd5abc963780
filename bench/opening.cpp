// Opening preferences with 100,000 queued events, compared with reading the same events as JSON text, and the memory
// that they take.

#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "bench/Comparison.h"
#include "bench/makeEvent.h"
#include "bench/reportJournalError.h"
#include "tests/support/TemporaryDirectory.h"

#include <malloc.h>
#include <simdjson.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace {

using namespace zelvora;
using bench::Comparison;
using platform::Array;
using platform::Value;
using shared::JournaledUserDefaults;
using shared::JournalOptions;

constexpr std::size_t many = 100'000;
// As long as the key of a real queue.
constexpr char const* key = "ZelvoraSDK_Storage_com.example.host_tracking_event";

// As an app leaves it that saves event after event, or as one leaves it that was compacted since.
enum class Written { EventByEvent, AtOnce };

void writeJournal(std::filesystem::path const& file, Written written)
{
    JournaledUserDefaults store(file, &bench::reportJournalError);
    Array events;
    for (std::size_t number = 0; number < many; ++number) {
        events = events.appending(bench::makeEvent(number));
        if (written == Written::EventByEvent)
            store.setObject(events, key);
    }
    store.setObject(events, key);
}

void writeText(std::filesystem::path const& file)
{
    auto events = nlohmann::json::array();
    for (std::size_t number = 0; number < many; ++number)
        events.push_back({ { "eventId", "product_view" }, { "adid", nullptr }, { "productId", "moon-jar" },
            { "price", 89000 }, { "page", "/v1/product.html" }, { "number", number } });
    std::ofstream(file) << events;
}

void require(bool holds)
{
    if (holds)
        return;
    std::fprintf(stderr, "The events are not all there.\n");
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

// A store that is opened in a round and closed before the next one, which is not timed.
class Opened final {
public:
    Opened(std::filesystem::path file, JournalOptions options) : m_file(std::move(file)), m_options(options) { }

    void open() { m_store.emplace(m_file, &bench::reportJournalError, m_options); }
    void openAndCount()
    {
        open();
        require(events().size() == many);
    }
    void openAndRead()
    {
        open();
        std::size_t members = 0;
        for (auto const& event : events())
            members += event.dictionary()->size();
        require(members > many);
    }
    void close() { m_store.reset(); }
    [[nodiscard]] Array events() { return *m_store->object(key)->array(); }

private:
    std::filesystem::path m_file;
    JournalOptions m_options;
    std::optional<JournaledUserDefaults> m_store;
};

void readWithSimdjson(std::filesystem::path const& file)
{
    simdjson::dom::parser parser;
    require(parser.load(file).get_array().size() == many);
}

void measureTime(std::filesystem::path const& folder)
{
    auto const text = folder / "events.json";
    Comparison const comparison(31, 1);
    auto const measure = [&](std::string const& name, std::string const& file, JournalOptions options,
                             void (Opened::*work)()) {
        Opened opened(folder / file, options);
        comparison.preparedBy([&] { opened.close(); })
            .print(name, [&] { (opened.*work)(); }, "simdjson reading them as text", [&] { readWithSimdjson(text); });
    };
    JournalOptions const atOnce;
    JournalOptions background;
    background.opening = shared::JournalOpening::InBackground;
    measure("opening 100,000 events", "single.journal", atOnce, &Opened::openAndCount);
    measure("opening 100,000 events, compacted", "compacted.journal", atOnce, &Opened::openAndCount);
    measure("opening them in the background, until it returns", "single.journal", background, &Opened::open);
    measure("opening 100,000 events and reading every one", "single.journal", atOnce, &Opened::openAndRead);
}

double allocatedBytes()
{
    auto const information = ::mallinfo2();
    return static_cast<double>(information.uordblks + information.hblkhd);
}

void measureMemory(std::filesystem::path const& folder)
{
    auto const textBytes = static_cast<double>(std::filesystem::file_size(folder / "events.json"));
    auto const before = allocatedBytes();
    Opened opened(folder / "single.journal", {});
    opened.openAndCount();
    bench::printFigure("memory of 100,000 events", (allocatedBytes() - before) / textBytes, "times their text");
    // As a page gets them.
    shared::JSONSerialization const json;
    require(json.isValidJSONObject(opened.events()));
    require(json.data(opened.events(), platform::JSONWritingOptions::None).has_value());
    bench::printFigure("memory of 100,000 events, once a page asked for them", (allocatedBytes() - before) / textBytes,
        "times their text");
    for (auto const& event : opened.events())
        require(event.dictionary());
    bench::printFigure("memory of 100,000 events, once every one was read", (allocatedBytes() - before) / textBytes,
        "times their text");
}

}

int main()
{
    tests::TemporaryDirectory const folder;
    std::fprintf(stderr, "Opening\n");
    writeJournal(folder / "single.journal", Written::EventByEvent);
    writeJournal(folder / "compacted.journal", Written::AtOnce);
    writeText(folder / "events.json");
    measureTime(folder.path());
    measureMemory(folder.path());
    return EXIT_SUCCESS;
}
