#include "examples/developer/observing/StoredValues.h"

#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace zelvora::developer {

namespace {

constexpr std::string_view queueKey = "tracking_event";
constexpr std::string_view timestampEnd = "_ts";
constexpr std::string_view expiryEnd = "_exp";

struct Unit {
    std::int64_t seconds;
    char const* korean;
    char const* english;
};

constexpr std::array<Unit, 4> units { {
    { 86'400, "일", " d" },
    { 3'600, "시간", " h" },
    { 60, "분", " min" },
    { 1, "초", " s" },
} };

// Of a value that expires; a page's own key may end so, too.
bool isCompanion(std::string const& key, std::set<std::string> const& keys)
{
    for (auto const end : { timestampEnd, expiryEnd }) {
        if (key.ends_with(end) && keys.contains(key.substr(0, key.size() - end.size())))
            return true;
    }
    return false;
}

}

std::string StoredValues::prefixOf(std::string const& bundleIdentifier)
{
    return "ZelvoraSDK_Storage_" + bundleIdentifier + "_";
}

std::vector<StoredValue> StoredValues::all(std::set<std::string> const& keys, platform::Date now) const
{
    std::vector<StoredValue> values;
    for (auto const& key : keys) {
        if (!key.starts_with(m_prefix) || key.substr(m_prefix.size()) == queueKey || isCompanion(key, keys))
            continue;
        if (auto value = find(key.substr(m_prefix.size()), now))
            values.push_back(*std::move(value));
    }
    return values;
}

std::optional<StoredValue> StoredValues::find(std::string const& key, platform::Date now) const
{
    auto const full = m_prefix + key;
    auto const value = m_preferences.object(full);
    if (!value)
        return std::nullopt;
    StoredValue stored { .key = key, .value = toJson(*value), .expiry = std::nullopt, .secondsLeft = std::nullopt };
    auto const timestamp = m_preferences.object(full + std::string(timestampEnd));
    auto const date = timestamp ? timestamp->date() : std::nullopt;
    auto const expiry = m_preferences.object(full + std::string(expiryEnd));
    if (date && expiry && expiry->number()) {
        stored.expiry = expiry->number();
        stored.secondsLeft = *stored.expiry - now.timeIntervalSince(*date);
    }
    return stored;
}

Json StoredValues::events() const
{
    auto const queue = m_preferences.object(m_prefix + std::string(queueKey));
    auto const* const events = queue ? queue->array() : nullptr;
    return events && events->holdsOnly(platform::Value::Kind::Dictionary) ? toJson(*queue) : Json::array();
}

Text durationText(double seconds)
{
    constexpr double endless = 1e15;
    if (!(std::abs(seconds) < endless))
        return { "끝없이", "forever" };
    auto left = static_cast<std::int64_t>(std::ceil(seconds));
    Text text;
    auto parts = 0;
    for (auto const& unit : units) {
        auto const count = left / unit.seconds;
        left %= unit.seconds;
        // Two units are as precise as people need it, but they have to follow one another.
        if (count == 0 && (parts > 0 || unit.seconds > 1)) {
            parts += parts > 0 ? 1 : 0;
            continue;
        }
        if (parts >= 2)
            break;
        text.korean += (parts > 0 ? " " : "") + std::to_string(count) + unit.korean;
        text.english += (parts > 0 ? " " : "") + std::to_string(count) + unit.english;
        ++parts;
    }
    return text;
}

Text timeLeftText(StoredValue const& value)
{
    if (!value.secondsLeft)
        return { "만료되지 않음", "does not expire" };
    if (*value.secondsLeft < 0)
        return { "만료됨: 다음에 읽을 때 지워집니다", "expired: the next read removes it" };
    auto const left = durationText(*value.secondsLeft);
    return { left.korean + " 남음", left.english + " left" };
}

}
