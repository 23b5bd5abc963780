#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include "ZelvoraPlatform/Foundation/Array.h"

#include <algorithm>
#include <utility>

namespace zelvora::shared {

using platform::Value;

namespace {

// The size of a single element is not known, so dropped elements count as average ones.
std::uint64_t estimatedBytes(std::uint64_t bytes, std::size_t elements, std::size_t dropped)
{
    if (dropped == 0)
        return 0;
    if (dropped >= elements)
        return bytes;
    auto const share = static_cast<double>(dropped) / static_cast<double>(elements);
    return static_cast<std::uint64_t>(static_cast<double>(bytes) * share);
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

void JournalTable::commit(std::string const& key, Entry* found, Value value, ChangeSize size)
{
    auto& entry = found ? *found : m_entries[key];
    auto const* const array = entry.value.array();
    account(entry, size, array ? array->size() : 0);
    entry.value = std::move(value);
}

void JournalTable::account(Entry& entry, ChangeSize size, std::size_t elements)
{
    m_liveBytes -= entry.bytes;
    if (size.kind == ChangeKind::Set) {
        entry.bytes = size.bytes;
        entry.version = ++m_lastVersion;
    } else {
        entry.bytes -= estimatedBytes(entry.bytes, elements, size.dropped);
        entry.bytes += size.bytes;
    }
    m_liveBytes += entry.bytes;
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
