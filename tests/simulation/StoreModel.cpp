#include "tests/simulation/StoreModel.h"

#include <algorithm>
#include <utility>

namespace zelvora::simulation {

using platform::Array;
using platform::Value;

namespace {

constexpr char const* eventsKey = "tracking_event";

}

StoreModel::StoreModel(std::optional<std::string> const& bundleIdentifier, Entries entries)
    : m_prefix("ZelvoraSDK_Storage_" + bundleIdentifier.value_or("unknown") + "_")
    , m_entries(std::move(entries))
{
}

void StoreModel::set(
    std::optional<Value> const& value, std::string const& key, std::optional<double> expiry, Lines& lines)
{
    lines.push_back("log debug set(forKey: " + key + ", value: " + debugDescription(value) + ")");
    if (value && (value->isNull() || value->nesting() > Value::maximumNesting)) {
        lines.push_back("log error set(forKey: " + key + ") refused a value that is not a property list");
        return;
    }
    auto const full = m_prefix + key;
    if (value)
        write(full, *value, lines);
    else
        erase(full, lines);
    if (expiry) {
        write(full + "_ts", m_now, lines);
        write(full + "_exp", *expiry, lines);
    } else {
        erase(full + "_ts", lines);
        erase(full + "_exp", lines);
    }
}

std::optional<Value> StoreModel::get(std::string const& key, Lines& lines)
{
    auto const full = m_prefix + key;
    auto const* timestamp = find(full + "_ts");
    auto const* expiry = find(full + "_exp");
    if (timestamp && timestamp->date() && expiry && expiry->number()) {
        auto const elapsed = m_now.timeIntervalSince1970 - timestamp->date()->timeIntervalSince1970;
        if (*expiry->number() < elapsed) {
            remove(key, lines);
            return std::nullopt;
        }
    }
    auto const* value = find(full);
    auto found = value ? std::optional(*value) : std::nullopt;
    lines.push_back("log debug get(forKey: " + key + ", value: " + debugDescription(found) + ")");
    return found;
}

void StoreModel::remove(std::string const& key, Lines& lines)
{
    for (auto const* suffix : { "", "_ts", "_exp" })
        erase(m_prefix + key + suffix, lines);
}

Array StoreModel::events(Lines& lines)
{
    auto const stored = get(eventsKey, lines);
    auto const* array = stored ? stored->array() : nullptr;
    if (!array || !std::ranges::all_of(array->begin(), array->end(), [](auto const& event) {
            return event.dictionary() != nullptr;
        }))
        return {};
    return *array;
}

void StoreModel::saveEvent(platform::Dictionary const& event, Lines& lines)
{
    if (event.nesting() > Value::maximumNesting - 2) {
        lines.emplace_back("log error saveEventTrackingData refused an event that nests too deep to be uploaded");
        return;
    }
    set(events(lines).appending(event), eventsKey, std::nullopt, lines);
}

Array StoreModel::removeEvents(std::size_t count, Lines& lines)
{
    auto const queue = events(lines);
    if (count < queue.size())
        set(queue.droppingFirst(count), eventsKey, std::nullopt, lines);
    else
        remove(eventsKey, lines);
    return queue.prefix(count);
}

std::vector<double> StoreModel::momentsOfExpiry() const
{
    std::vector<double> moments;
    for (auto const& [key, value] : m_entries) {
        if (!key.ends_with("_ts") || !value.date())
            continue;
        auto const* expiry = find(key.substr(0, key.size() - 3) + "_exp");
        if (expiry && expiry->number())
            moments.push_back(value.date()->timeIntervalSince1970 + *expiry->number());
    }
    return moments;
}

Array StoreModel::queued() const
{
    auto const* stored = find(m_prefix + eventsKey);
    return stored && stored->array() ? *stored->array() : Array();
}

Value const* StoreModel::find(std::string const& fullKey) const
{
    auto const found = m_entries.find(fullKey);
    return found == m_entries.end() ? nullptr : &found->second;
}

void StoreModel::write(std::string const& fullKey, Value value, Lines& lines)
{
    lines.push_back("write " + fullKey);
    m_entries.insert_or_assign(fullKey, std::move(value));
}

void StoreModel::erase(std::string const& fullKey, Lines& lines)
{
    lines.push_back("delete " + fullKey);
    m_entries.erase(fullKey);
}

}
