#include "tests/simulation/Grammar.h"

#include "ZelvoraPlatform/Foundation/Array.h"

#include <array>
#include <limits>
#include <utility>
#include <vector>

namespace zelvora::simulation {

using platform::Array;
using platform::Date;
using platform::Dictionary;
using platform::Null;
using platform::Value;

namespace {

using Entries = Dictionary::Entries;

double makeNumber(Random& random)
{
    static constexpr std::array<double, 16> numbers { 0, 1, 7, -3, 0.5, -0.25, 1e3, 123456789, 1e15, 1700000000000000,
        9007199254740992, 1e21, 1e-7, 0.1, -0.0, 3.141592653589793 };
    if (random.oneIn(60))
        return random.oneIn(2) ? std::numeric_limits<double>::quiet_NaN() : std::numeric_limits<double>::infinity();
    return random.pick(numbers);
}

// Mostly of the kind that the message wants, at times of another, at times missing.
void add(Random& random, Entries& entries, char const* name, Value right)
{
    if (random.oneIn(14))
        return;
    entries.emplace_back(name, random.oneIn(14) ? makeValue(random, 1) : std::move(right));
}

Value makeLifetimeArgument(Random& random)
{
    switch (random.below(8)) {
    case 0:
        return "60";
    case 1:
        return makeValue(random, 1);
    default:
        return makeLifetime(random);
    }
}

std::string makeCallback(Random& random)
{
    static constexpr std::array<char const*, 4> callbacks { "cb", "shop.answers.got", "", "(x => x)" };
    return random.pick(callbacks);
}

std::string makeActionName(Random& random)
{
    static constexpr std::array<char const*, 5> names { "share", "pay", "close", "", "결제" };
    return random.pick(names);
}

Entries makeArguments(Random& random, std::string const& action, int event)
{
    Entries entries;
    if (action == "setItem" || action == "getItem" || action == "removeItem")
        add(random, entries, "key", makeKey(random));
    if (action == "setItem") {
        add(random, entries, "value", makeValue(random));
        if (random.oneIn(2))
            entries.emplace_back("expire", makeLifetimeArgument(random));
    }
    if (action == "getItem" || action == "getEvents")
        add(random, entries, "callback", makeCallback(random));
    if (action == "saveEvent")
        add(random, entries, "data", makeEvent(random, event));
    if (action == "setFooterVisible")
        add(random, entries, "visible", random.oneIn(2));
    if (action == "invokeCustomAction") {
        add(random, entries, "name", makeActionName(random));
        add(random, entries, "data", makeText(random));
    }
    return entries;
}

}

std::string makeKey(Random& random)
{
    static constexpr std::array<char const*, 12> keys { "a", "a", "a", "b", "b", "a_ts", "a_exp", "shop_id",
        "tracking_event", "adid", "", "열쇠" };
    return random.pick(keys);
}

double makeLifetime(Random& random)
{
    static constexpr std::array<double, 9> lifetimes { 0, -1, 0.5, 1, 5, 10, 60.25, 3600, 86400 };
    return random.pick(lifetimes);
}

std::string makeText(Random& random)
{
    static constexpr std::array<char const*, 10> texts { "", "light", "it's", "two\nlines", "\"quoted\" \\ back",
        "한국어", "</script>", "1", "\xF0\x9F\x98\x80", "null" };
    return random.pick(texts);
}

Value makeValue(Random& random, int depth)
{
    auto const leaf = depth <= 0;
    switch (random.below(leaf ? 6 : 9)) {
    case 0:
        return random.oneIn(4) ? Value(Null {}) : Value(makeText(random));
    case 1:
        return random.oneIn(2);
    case 2:
    case 3:
        return makeNumber(random);
    case 4:
        return random.oneIn(8) ? Value(Date { makeNumber(random) }) : Value(makeText(random));
    case 5:
        return makeText(random);
    case 6:
    case 7: {
        std::vector<Value> elements;
        for (auto count = random.below(4); count > 0; --count)
            elements.push_back(makeValue(random, depth - 1));
        return Array(elements);
    }
    default: {
        Entries entries;
        for (auto count = random.below(4); count > 0; --count)
            entries.emplace_back(makeKey(random), makeValue(random, depth - 1));
        return Dictionary(std::move(entries));
    }
    }
}

Dictionary makeEvent(Random& random, int number)
{
    Entries entries { { "n", number } };
    auto const addOdd = [&](char const* name) {
        switch (random.below(5)) {
        case 0:
            entries.emplace_back(name, "");
            return;
        case 1:
            entries.emplace_back(name, Null {});
            return;
        case 2:
            entries.emplace_back(name, "given");
            return;
        case 3:
            entries.emplace_back(name, 7);
            return;
        default:
            return;
        }
    };
    addOdd("eventId");
    addOdd("adid");
    if (random.oneIn(3))
        entries.emplace_back("more", Null {});
    // Not too often: an event that JSON cannot hold keeps all later ones from being uploaded.
    if (random.oneIn(3))
        entries.emplace_back("detail", random.oneIn(40) ? makeValue(random) : Value(makeText(random)));
    if (random.oneIn(4))
        entries.emplace_back("inner", Dictionary { { "nothing", Null {} } });
    return Dictionary(std::move(entries));
}

Value makeMessage(Random& random, int event)
{
    static constexpr std::array<char const*, 16> actions { "close", "setItem", "setItem", "setItem", "getItem",
        "getItem", "getItem", "removeItem", "saveEvent", "saveEvent", "saveEvent", "getEvents", "setFooterVisible",
        "invokeCustomAction", "invokeCustomAction", "Close" };
    if (random.oneIn(30))
        return makeValue(random);
    std::string const action = random.pick(actions);
    auto entries = makeArguments(random, action, event);
    add(random, entries, "action", action);
    return Dictionary(std::move(entries));
}

}
