#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include "ZelvoraPlatform/Foundation/Array.h"

#include <algorithm>

namespace zelvora::shared {

using platform::Value;

namespace {

// The size of a single element is not known, so dropped elements count as average ones.
std::uint64_t estimatedBytes(JournalTable::Entry const& entry, std::size_t dropped)
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

JournalTable::Entry* JournalTable::find(std::string const& key)
{
    auto const found = m_entries.find(key);
    return found != m_entries.end() ? &found->second : nullptr;
}

Value const* JournalTable::value(std::string const& key) const
{
    auto const found = m_entries.find(key);
    return found != m_entries.end() ? &found->second.value : nullptr;
}

bool JournalTable::apply(std::vector<JournalChange> changes)
{
    if (!std::ranges::all_of(changes, [this](JournalChange const& change) { return isApplicable(change); }))
        return false;
    for (auto& change : changes)
        applyChange(change);
    return true;
}

bool JournalTable::isApplicable(JournalChange const& change) const
{
    if (change.size.kind != ChangeKind::Extend)
        return true;
    auto const* const stored = value(std::string { change.key });
    auto const* const array = stored ? stored->array() : nullptr;
    return array && change.size.dropped <= array->size();
}

void JournalTable::applyChange(JournalChange& change)
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
    // Can only fail if a record changes one key twice, which we never write. Such a change is ignored.
    auto const* const stored = found ? found->value.array() : nullptr;
    if (!stored)
        return;
    auto array = stored->droppingFirst(change.size.dropped);
    for (auto& element : change.appended)
        array = array.appending(std::move(element));
    commit(key, found, Value { std::move(array) }, change.size);
}

void JournalTable::commit(std::string const& key, Entry* found, Value value, ChangeSize size)
{
    auto& entry = found ? *found : m_entries[key];
    m_liveBytes -= entry.bytes;
    if (size.kind == ChangeKind::Set) {
        entry.bytes = size.bytes;
        entry.version = ++m_lastVersion;
    } else {
        entry.bytes -= estimatedBytes(entry, size.dropped);
        entry.bytes += size.bytes;
    }
    m_liveBytes += entry.bytes;
    entry.value = std::move(value);
}

void JournalTable::remove(std::string const& key)
{
    auto const found = m_entries.find(key);
    if (found == m_entries.end())
        return;
    m_liveBytes -= found->second.bytes;
    m_entries.erase(found);
}

JournalTable::Snapshot JournalTable::snapshot() const
{
    Snapshot snapshot;
    snapshot.reserve(m_entries.size());
    for (auto const& [key, entry] : m_entries)
        snapshot.push_back({ .key = key, .entry = entry });
    return snapshot;
}

void JournalTable::correctSizes(Snapshot const& snapshot, std::vector<std::uint64_t> const& exactBytes)
{
    for (std::size_t i = 0; i < snapshot.size() && i < exactBytes.size(); ++i) {
        auto const found = m_entries.find(snapshot[i].key);
        if (found == m_entries.end() || found->second.version != snapshot[i].entry.version)
            continue;
        auto& bytes = found->second.bytes;
        m_liveBytes -= bytes;
        // Elements added or dropped since the snapshot keep their estimate.
        bytes += exactBytes[i];
        bytes -= std::min(bytes, snapshot[i].entry.bytes);
        m_liveBytes += bytes;
    }
}

}
