#include "tests/simulation/FileStore.h"

#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "ZelvoraPlatform/Foundation/Array.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <set>

namespace zelvora::simulation {

using platform::Value;

namespace {

shared::JournalOptions optionsFor(FaultyFiles& files)
{
    return { .syncDelay = std::chrono::milliseconds(2), .minimumCompactionSize = 4096, .fileOperations = &files };
}

bool isSame(FileStore::Contents const& first, FileStore::Contents const& second)
{
    return std::ranges::equal(first, second, [](auto const& one, auto const& other) {
        return one.first == other.first && simulation::isSame(one.second, other.second);
    });
}

}

bool isSame(std::optional<Value> const& first, std::optional<Value> const& second)
{
    if (first == second)
        return true;
    if (!first || !second)
        return false;
    // Something in them may be no number, which equals nothing.
    std::array<std::string, 2> encoded;
    shared::appendValue(encoded[0], *first);
    shared::appendValue(encoded[1], *second);
    return encoded[0] == encoded[1];
}

FileStore::FileStore(Past& past)
    : m_path(*past.journal)
    , m_preferences(m_path, [](std::string const&) { }, optionsFor(m_files))
{
    if (past.possible.empty())
        writeFirst(past);
    else
        recover(past);
    m_possible = { m_contents };
}

void FileStore::writeFirst(Past const& past)
{
    for (auto const& [key, value] : past.stored)
        m_preferences.setObject(value, key);
    m_contents = past.stored;
}

void FileStore::recover(Past& past)
{
    std::set<std::string> keys;
    for (auto const& contents : past.possible) {
        for (auto const& [key, value] : contents)
            keys.insert(key);
    }
    for (auto const& key : keys) {
        if (auto const value = m_preferences.object(key))
            m_contents.emplace(key, *value);
    }
    if (std::ranges::none_of(past.possible, [&](auto const& contents) { return isSame(contents, m_contents); }))
        m_failure = "the file does not hold what it may, of " + std::to_string(past.possible.size()) + " possibilities";

    past.stored = m_contents;
    // Without a failed write nothing may be missing.
    if (past.possible.size() == 1)
        return;
    std::set<int> queued;
    for (auto const& [key, value] : m_contents) {
        if (key.ends_with("_tracking_event") && value.array())
            queued = numbersOf(*value.array());
    }
    for (auto const number : past.delivery.saved) {
        if (!queued.contains(number) && !past.delivery.received.contains(number))
            past.delivery.lost.emplace(number, Loss::FailedWrite);
    }
}

void FileStore::breakOrHeal(Random random)
{
    constexpr std::size_t enough = 40;
    if (!m_files.areBroken()) {
        if (random.oneIn(12))
            m_files.breakSome(random);
    } else if (random.oneIn(6) || m_possible.size() > enough)
        m_files.heal();
}

void FileStore::leave(Past& past) const
{
    past.journal = m_path;
    past.possible = m_possible;
}

void FileStore::didWrite(std::string const& key)
{
    auto const found = m_contents.find(key);
    auto const before = found == m_contents.end() ? std::nullopt : std::optional(found->second);
    auto const after = m_preferences.object(key);
    // What is stored already is not written.
    if (isSame(before, after))
        return;
    if (after)
        m_contents.insert_or_assign(key, *after);
    else
        m_contents.erase(key);
    if (!m_files.areBroken())
        m_possible.clear();
    m_possible.push_back(m_contents);
}

}
