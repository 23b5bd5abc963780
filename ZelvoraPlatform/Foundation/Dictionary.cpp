#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include "ZelvoraPlatform/Foundation/Dismantling.h"

#include <algorithm>
#include <functional>

namespace zelvora::platform {

struct Dictionary::Contents {
    explicit Contents(Entries given) : entries(std::move(given))
    {
        // Those that were read from a store are in order already.
        auto const misplaced = std::ranges::adjacent_find(entries, std::greater_equal<>(), &Entry::first);
        if (misplaced != entries.end())
            entries = ordered(std::move(entries));
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

    static Entries ordered(Entries unordered)
    {
        std::vector<Entry*> order;
        order.reserve(unordered.size());
        for (auto& entry : unordered)
            order.push_back(&entry);
        // Ties are broken by position, so that the last of several entries with one key wins.
        std::ranges::sort(
            order, {}, [](Entry* entry) { return std::pair<std::string_view, Entry*>(entry->first, entry); });
        Entries ordered;
        ordered.reserve(order.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (i + 1 == order.size() || order[i]->first != order[i + 1]->first)
                ordered.push_back(std::move(*order[i]));
        }
        return ordered;
    }

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

}
