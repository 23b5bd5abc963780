#include "tests/ZelvoraAdapters/shared/Journal/JournalHistory.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <random>

namespace zelvora::tests {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Value;

namespace {

using Random = std::mt19937_64;

constexpr std::size_t longestQueue = 250;
constexpr auto queueKey = "queue";

std::string text(Random& random)
{
    return std::string(random() % 120, static_cast<char>('a' + random() % 26));
}

// Contains the number, so that no two steps write the same value.
Value someValue(std::uint64_t number, Random& random)
{
    auto const asNumber = static_cast<double>(number);
    switch (random() % 5) {
    case 0:
        return asNumber + 0.25;
    case 1:
        return text(random) + std::to_string(number);
    case 2:
        return Date { asNumber };
    case 3:
        return Data { std::to_string(number) + std::string("\0\xff", 2) };
    default:
        return Dictionary { { "number", number }, { "list", Array { random() % 2 == 0, text(random) } } };
    }
}

}

std::vector<std::string> const& JournalHistory::keys()
{
    static std::vector<std::string> const s_keys { queueKey, "a", "b", "c", "d", "e", "f" };
    return s_keys;
}

JournalHistory::State JournalHistory::stateOf(platform::UserDefaults& store)
{
    State state;
    for (auto const& key : keys()) {
        if (auto value = store.object(key))
            state.emplace(key, *std::move(value));
    }
    return state;
}

template<typename Read>
JournalHistory::Change JournalHistory::change(std::uint64_t number, Read const& read) const
{
    Random random { m_seed * 1'000'003 + number };
    random.discard(3);
    auto const stored = read(queueKey);
    auto const queue = stored ? *stored->array() : Array {};
    auto const dice = random() % 100;
    if (queue.size() >= longestQueue)
        return { queueKey, dice % 2 == 0 ? std::nullopt : std::optional(Value(queue.droppingFirst(200))) };
    if (dice < 8 && !queue.isEmpty())
        return { queueKey, queue.droppingFirst(1 + random() % 20) };
    if (dice < 55)
        return { queueKey, queue.appending(Dictionary { { "number", number }, { "text", text(random) } }) };
    auto const& key = keys()[1 + random() % (keys().size() - 1)];
    if (dice < 70 && read(key))
        return { key, std::nullopt };
    return { key, someValue(number, random) };
}

void JournalHistory::takeStep(std::uint64_t number, platform::UserDefaults& store) const
{
    auto made = change(number, [&](std::string const& key) { return store.object(key); });
    store.setObject(std::move(made.value), made.key);
}

void JournalHistory::takeStep(std::uint64_t number, State& state) const
{
    auto made = change(number, [&](std::string const& key) {
        auto const found = state.find(key);
        return found != state.end() ? std::optional(found->second) : std::nullopt;
    });
    if (made.value)
        state.insert_or_assign(made.key, *std::move(made.value));
    else
        state.erase(made.key);
}

}
