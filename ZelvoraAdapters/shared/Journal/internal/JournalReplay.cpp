#include "ZelvoraAdapters/shared/Journal/internal/JournalReplay.h"

#include "ZelvoraPlatform/Foundation/Array.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace zelvora::shared {

using platform::Value;

JournalReplay::~JournalReplay()
{
    for (auto& [entry, array] : m_arrays)
        entry->value = array.takeArray();
}

bool JournalReplay::apply(std::string_view payload)
{
    if (!readChanges(payload, m_changes))
        return false;
    if (!std::ranges::all_of(m_changes, [this](JournalChange const& change) { return isApplicable(change); }))
        return false;
    for (auto const& change : m_changes)
        applyChange(change);
    return true;
}

JournalTable::Entry* JournalReplay::find(std::string_view key)
{
    m_key.assign(key);
    return m_table.find(m_key);
}

bool JournalReplay::isApplicable(JournalChange const& change)
{
    if (change.size.kind != ChangeKind::Extend)
        return true;
    auto* const entry = find(change.key);
    if (!entry)
        return false;
    if (auto const encoded = m_arrays.find(entry); encoded != m_arrays.end())
        return change.size.dropped <= encoded->second.size();
    auto const* const array = entry->value.array();
    return array && change.size.dropped <= array->size();
}

void JournalReplay::applyChange(JournalChange const& change)
{
    switch (change.size.kind) {
    case ChangeKind::Set:
        return set(change);
    case ChangeKind::Remove:
        m_arrays.erase(find(change.key));
        return m_table.remove(m_key);
    case ChangeKind::Extend:
        // Only a record that changes one key twice makes the change inapplicable. We never write such a record; the
        // change is ignored then.
        if (isApplicable(change))
            extend(*find(change.key), change);
    }
}

void JournalReplay::set(JournalChange const& change)
{
    auto* const found = find(change.key);
    m_arrays.erase(found);
    if (change.shape.kind == Value::Kind::Array) {
        m_table.commit(m_key, found, Value {}, change.size);
        m_arrays.emplace(m_table.find(m_key), EncodedArray { change.bytes });
        return;
    }
    ByteReader in { change.bytes };
    if (auto value = readValue(in))
        m_table.commit(m_key, found, *std::move(value), change.size);
}

void JournalReplay::extend(JournalTable::Entry& entry, JournalChange const& change)
{
    if (auto const encoded = m_arrays.find(&entry); encoded != m_arrays.end()) {
        m_table.account(entry, change.size, encoded->second.size());
        extend(encoded->second, change);
        return;
    }
    // Somebody else extended an array that is in use here.
    auto array = entry.value.array()->droppingFirst(change.size.dropped);
    ByteReader in { change.bytes };
    for (std::uint64_t i = 0; i < change.appended; ++i) {
        if (auto element = readValue(in, Value::maximumNesting - 1))
            array = array.appending(*std::move(element));
    }
    m_table.commit(m_key, &entry, std::move(array), change.size);
}

void JournalReplay::extend(EncodedArray& array, JournalChange const& change)
{
    array.dropFirst(change.size.dropped);
    if (change.appended == 1)
        array.append(change.bytes, change.shape);
    else
        array.append(change.bytes, change.appended);
}

}
