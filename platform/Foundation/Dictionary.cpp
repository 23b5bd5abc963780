#include "platform/Foundation/Dictionary.h"

#include "platform/Foundation/Dismantling.h"

#include <algorithm>
#include <map>

namespace zelvora::platform {

struct Dictionary::Contents {
    explicit Contents(Entries unordered)
    {
        std::map<std::string, Value> ordered;
        for (auto& [key, value] : unordered)
            ordered.insert_or_assign(std::move(key), std::move(value));
        entries.reserve(ordered.size());
        for (auto& [key, value] : ordered)
            entries.emplace_back(key, std::move(value));
        for (auto const& entry : entries)
            nesting = std::max(nesting, entry.second.nesting() + 1);
    }
    ~Contents()
    {
        for (auto& entry : entries)
            Dismantling::take(entry.second);
    }
    Contents(Contents const&) = delete;
    Contents& operator=(Contents const&) = delete;

    Entries entries;
    std::size_t nesting = 1;
};

Dictionary::Dictionary() : Dictionary(Entries {}) { }

Dictionary::Dictionary(std::initializer_list<Entry> entries) : Dictionary(Entries(entries)) { }

Dictionary::Dictionary(Entries entries) : m_contents(std::make_shared<Contents const>(std::move(entries))) { }

std::size_t Dictionary::size() const
{
    return m_contents->entries.size();
}

Value const* Dictionary::find(std::string_view key) const
{
    auto const& entries = m_contents->entries;
    auto const found = std::ranges::lower_bound(entries, key, {}, &Entry::first);
    return found != entries.end() && found->first == key ? &found->second : nullptr;
}

Dictionary::Entries::const_iterator Dictionary::begin() const
{
    return m_contents->entries.begin();
}
Dictionary::Entries::const_iterator Dictionary::end() const
{
    return m_contents->entries.end();
}
std::size_t Dictionary::nesting() const
{
    return m_contents->nesting;
}

bool Dictionary::operator==(Dictionary const& other) const
{
    return m_contents == other.m_contents || m_contents->entries == other.m_contents->entries;
}

}
