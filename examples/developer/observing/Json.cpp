#include "examples/developer/observing/Json.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <sstream>

namespace zelvora::developer {

using platform::Value;

namespace {

std::string dateText(platform::Date date)
{
    auto const whole = static_cast<std::time_t>(std::floor(date.timeIntervalSince1970));
    std::tm parts {};
    if (!gmtime_r(&whole, &parts))
        return "date";
    constexpr std::size_t longest = 64;
    std::string text(longest, '\0');
    text.resize(std::strftime(text.data(), text.size(), "date %Y-%m-%dT%H:%M:%SZ", &parts));
    return text;
}

Json numberOf(Value const& value)
{
    if (!std::isfinite(*value.number()))
        return platform::numberText(value);
    // Its text reads back as the same number, and a whole one stays whole.
    return Json::parse(platform::numberText(value));
}

Json listOf(platform::Array const& array)
{
    auto list = Json::array();
    for (auto const& element : array)
        list.push_back(toJson(element));
    return list;
}

Json objectOf(platform::Dictionary const& dictionary)
{
    auto object = Json::object();
    for (auto const& [key, member] : dictionary)
        object[key] = toJson(member);
    return object;
}

bool memberFits(Json const& expected, std::string const& name, Json const& found)
{
    auto const member = found.find(name);
    return member != found.end() && fits(expected, *member);
}

}

Json toJson(Value const& value)
{
    if (value.nesting() > Value::maximumNesting)
        return debugDescription(value);
    switch (value.kind()) {
    case Value::Kind::Null:
        return nullptr;
    case Value::Kind::Boolean:
        return *value.boolean();
    case Value::Kind::Number:
        return numberOf(value);
    case Value::Kind::Text:
        return *value.text();
    case Value::Kind::Date:
        return dateText(*value.date());
    case Value::Kind::Data:
        return std::to_string(value.data()->bytes.size()) + " bytes";
    case Value::Kind::Array:
        return listOf(*value.array());
    case Value::Kind::Dictionary:
        return objectOf(*value.dictionary());
    }
    return nullptr;
}

bool fits(Json const& expected, Json const& found)
{
    if (expected.is_object()) {
        auto const members = expected.items();
        return found.is_object() && std::ranges::all_of(members.begin(), members.end(), [&found](auto const& member) {
            return memberFits(member.value(), member.key(), found);
        });
    }
    if (expected.is_array()) {
        return found.is_array()
            && std::ranges::equal(expected, found, [](auto const& one, auto const& other) { return fits(one, other); });
    }
    return expected == found;
}

std::string lineOf(Json const& json, std::size_t limit)
{
    return shortened(json.dump(-1, ' ', false, Json::error_handler_t::replace), limit);
}

std::string shortened(std::string text, std::size_t limit)
{
    if (text.size() <= limit)
        return text;
    auto const isInsideLetter = [&text](std::size_t place) {
        return (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80U;
    };
    while (limit > 0 && isInsideLetter(limit))
        --limit;
    return text.substr(0, limit) + "…";
}

}
