#include "ZelvoraAdapters/shared/Journal/JournalState.h"

#include "ZelvoraPlatform/Foundation/Array.h"

#include <algorithm>

namespace zelvora::shared {

using platform::Value;

namespace {

// What dropped elements took is not known any more: they count as the average did.
std::uint64_t estimatedBytes(JournalState::Entry const& entry, std::size_t dropped)
{
    if (dropped == 0)
        return 0;
    auto const* const array = entry.value.array();
    if (!array || dropped >= array->size())
        return entry.bytes;
    auto const share = static_cast<double>(dropped) / static_cast<double>(array->size());
    return static_cast<std::uint64_t>(static_cast<double>(entry.bytes) * share);
}

}

JournalState::Entry* JournalState::find(std::string const& key)
{
    auto const found = m_entries.find(key);
    return found != m_entries.end() ? &found->second : nullptr;
}

Value const* JournalState::value(std::string const& key) const
{
    auto const found = m_entries.find(key);
    return found != m_entries.end() ? &found->second.value : nullptr;
}

bool JournalState::apply(std::vector<JournalChange> changes)
{
    if (!std::ranges::all_of(changes, [this](JournalChange const& change) { return fits(change); }))
        return false;
    for (auto& change : changes)
        applyFitting(change);
    return true;
}

bool JournalState::fits(JournalChange const& change) const
{
    if (change.size.kind != ChangeKind::Extend)
        return true;
    auto const* const stored = value(std::string { change.key });
    auto const* const array = stored ? stored->array() : nullptr;
    return array && change.size.dropped <= array->size();
}

void JournalState::applyFitting(JournalChange& change)
{
    std::string const key { change.key };
    auto* const found = find(key);
    switch (change.size.kind) {
    case ChangeKind::Set:
        return commit(key, found, std::move(change.value), change.size);
    case ChangeKind::Remove:
        return remove(key);
    case ChangeKind::Extend:
        break;
    }
    // Changes of one record are of different keys, so what fitted still does; a file that has it otherwise gets
    // nothing.
    auto const* const stored = found ? found->value.array() : nullptr;
    if (!stored)
        return;
    auto array = stored->droppingFirst(change.size.dropped);
    for (auto& element : change.appended)
        array = array.appending(std::move(element));
    commit(key, found, Value { std::move(array) }, change.size);
}

void JournalState::commit(std::string const& key, Entry* found, Value value, ChangeSize size)
{
    auto& entry = found ? *found : m_entries[key];
    m_liveBytes -= entry.bytes;
    if (size.kind == ChangeKind::Set) {
        entry.bytes = size.bytes;
        entry.birth = ++m_births;
    } else {
        entry.bytes -= estimatedBytes(entry, size.dropped);
        entry.bytes += size.bytes;
    }
    m_liveBytes += entry.bytes;
    entry.value = std::move(value);
}

void JournalState::remove(std::string const& key)
{
    auto const found = m_entries.find(key);
    if (found == m_entries.end())
        return;
    m_liveBytes -= found->second.bytes;
    m_entries.erase(found);
}

JournalState::Snapshot JournalState::snapshot() const
{
    Snapshot snapshot;
    snapshot.reserve(m_entries.size());
    for (auto const& [key, entry] : m_entries)
        snapshot.push_back({ .key = key, .entry = entry });
    return snapshot;
}

void JournalState::correctSizes(Snapshot const& snapshot, std::vector<std::uint64_t> const& exactBytes)
{
    for (std::size_t i = 0; i < snapshot.size() && i < exactBytes.size(); ++i) {
        auto const found = m_entries.find(snapshot[i].key);
        if (found == m_entries.end() || found->second.birth != snapshot[i].entry.birth)
            continue;
        auto& bytes = found->second.bytes;
        m_liveBytes -= bytes;
        // What came or went meanwhile stays counted as it was.
        bytes += exactBytes[i];
        bytes -= std::min(bytes, snapshot[i].entry.bytes);
        m_liveBytes += bytes;
    }
}

}
