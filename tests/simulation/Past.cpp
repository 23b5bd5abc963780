#include "tests/simulation/Past.h"

#include "ZelvoraAdapters/memory/Foundation/Clock.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "tests/simulation/Grammar.h"

#include <array>
#include <vector>

namespace zelvora::simulation {

using platform::Array;
using platform::Dictionary;
using platform::Value;
using Status = platform::ATTrackingAuthorizationStatus;

namespace {

Array arrayOf(std::set<int> const& numbers)
{
    return Array(std::vector<Value>(numbers.begin(), numbers.end()));
}

int integer(Value const& value)
{
    return static_cast<int>(*value.number());
}

std::set<int> setIn(Value const& value)
{
    std::set<int> numbers;
    for (auto const& number : *value.array())
        numbers.insert(integer(number));
    return numbers;
}

void addEvents(Random& random, Past& past, std::size_t count)
{
    std::vector<Value> events;
    for (; count > 0; --count) {
        events.emplace_back(Dictionary { { "n", ++past.lastEvent }, { "eventId", random.oneIn(2) ? "view" : "" } });
        past.delivery.saved.insert(past.lastEvent);
    }
    past.stored.insert_or_assign(
        "ZelvoraSDK_Storage_" + past.bundleIdentifier.value_or("unknown") + "_tracking_event", Array(events));
}

Dictionary dictionaryOf(memory::UserDefaults::Contents const& contents)
{
    return Dictionary(Dictionary::Entries(contents.begin(), contents.end()));
}

memory::UserDefaults::Contents contentsIn(Value const& value)
{
    return { value.dictionary()->begin(), value.dictionary()->end() };
}

}

Past makePast(std::uint64_t seed)
{
    Random random(seed ^ 0x5EEDULL);
    Past past { .now = memory::Clock::start };
    if (random.oneIn(20))
        past.bundleIdentifier.reset();
    auto const prefix = "ZelvoraSDK_Storage_" + past.bundleIdentifier.value_or("unknown") + "_";
    if (random.oneIn(2))
        past.status = static_cast<Status>(random.below(4));
    if (random.oneIn(5)) {
        static constexpr std::array<double, 4> ages { 0, 86400, 86400.125, 100 };
        past.stored.emplace(prefix + "shop_id", "kept-shop");
        past.stored.emplace(prefix + "shop_id_exp", 86400);
        past.stored.emplace(
            prefix + "shop_id_ts", platform::Date { past.now.timeIntervalSince1970 - random.pick(ages) });
    }
    if (random.oneIn(40))
        addEvents(random, past, 495 + random.below(600));
    else if (random.oneIn(10))
        addEvents(random, past, random.below(4));
    else if (random.oneIn(30))
        past.stored.emplace(prefix + "tracking_event", makeText(random));
    return past;
}

Value valueOf(Past const& past)
{
    std::vector<Value> possible;
    for (auto const& contents : past.possible)
        possible.emplace_back(dictionaryOf(contents));
    std::vector<Value> lost;
    for (auto const& [number, loss] : past.delivery.lost)
        lost.emplace_back(Array { number, static_cast<int>(loss) });
    Dictionary::Entries entries {
        { "stored", dictionaryOf(past.stored) },
        { "possible", Array(possible) },
        { "now", past.now },
        { "status", static_cast<int>(past.status) },
        { "lastEvent", past.lastEvent },
        { "saved", arrayOf(past.delivery.saved) },
        { "received", arrayOf(past.delivery.received) },
        { "lost", Array(lost) },
    };
    if (past.bundleIdentifier)
        entries.emplace_back("bundle", *past.bundleIdentifier);
    if (past.journal)
        entries.emplace_back("journal", *past.journal);
    return Dictionary(std::move(entries));
}

Past pastIn(Value const& value)
{
    auto const& entries = *value.dictionary();
    Past past {
        .bundleIdentifier = std::nullopt,
        .stored = contentsIn(*entries.find("stored")),
        .now = *entries.find("now")->date(),
        .status = static_cast<Status>(integer(*entries.find("status"))),
        .lastEvent = integer(*entries.find("lastEvent")),
        .delivery = { .saved = setIn(*entries.find("saved")),
            .received = setIn(*entries.find("received")),
            .lost = {} },
    };
    if (auto const* bundle = entries.find("bundle"))
        past.bundleIdentifier = *bundle->text();
    if (auto const* journal = entries.find("journal"))
        past.journal = *journal->text();
    for (auto const& contents : *entries.find("possible")->array())
        past.possible.push_back(contentsIn(contents));
    for (auto const& pair : *entries.find("lost")->array())
        past.delivery.lost.emplace(integer(pair.array()->at(0)), static_cast<Loss>(integer(pair.array()->at(1))));
    return past;
}

}
