// What writing and reading JSON costs, against the JSON library. To write, it needs the value converted to its own
// type; both check what JSON cannot represent and give the same text. To read, both make values of their own.

#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "bench/Comparison.h"
#include "bench/makeEvent.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

namespace {

using namespace zelvora;
using platform::Array;
using platform::Dictionary;
using platform::Value;

constexpr std::size_t batch = 500;

nlohmann::json converted(Value const& value);

nlohmann::json convertedNumber(double number)
{
    constexpr double plainLimit = 1e16;
    if (!std::isfinite(number))
        throw std::invalid_argument("not a JSON number");
    if (std::trunc(number) == number && std::abs(number) < plainLimit)
        return static_cast<std::int64_t>(number);
    return number;
}

nlohmann::json convertedArray(Array const& array)
{
    nlohmann::json::array_t elements;
    elements.reserve(array.size());
    for (auto const& element : array)
        elements.push_back(converted(element));
    return elements;
}

nlohmann::json convertedDictionary(Dictionary const& dictionary)
{
    nlohmann::json::object_t members;
    for (auto const& [key, value] : dictionary)
        members.emplace_hint(members.end(), key, converted(value));
    return members;
}

nlohmann::json converted(Value const& value)
{
    switch (value.kind()) {
    case Value::Kind::Null:
        return nullptr;
    case Value::Kind::Boolean:
        return *value.boolean();
    case Value::Kind::Number:
        return convertedNumber(*value.number());
    case Value::Kind::Text:
        return std::string(*value.text());
    case Value::Kind::Array:
        return convertedArray(*value.array());
    case Value::Kind::Dictionary:
        return convertedDictionary(*value.dictionary());
    case Value::Kind::Date:
    case Value::Kind::Data:
        break;
    }
    throw std::invalid_argument("not a JSON value");
}

Value makeUpload()
{
    Array events;
    for (std::size_t number = 0; number < batch; ++number)
        events = events.appending(bench::makeEvent(number));
    return Dictionary { { "data", events }, { "profile", "prd" } };
}

Value makeTexts()
{
    Array texts;
    for (std::size_t number = 0; number < batch; ++number)
        texts = texts.appending("\"Moon jar\"\t\\" + std::to_string(number) + "\\\n달항아리, 백자\x01");
    return texts;
}

Value makeNumbers()
{
    Array numbers;
    for (std::size_t number = 0; number < batch; ++number)
        numbers = numbers.appending(static_cast<double>(number) * 1000).appending(static_cast<double>(number) / 7 + 1);
    return numbers;
}

void measure(std::string const& name, Value const& value)
{
    shared::JSONSerialization const serialization;
    std::string ours;
    auto const write = [&] { ours = serialization.data(value, platform::JSONWritingOptions::None)->bytes; };
    std::string theirs;
    auto const convertAndWrite = [&] { theirs = converted(value).dump(); };
    auto const ready = converted(value);
    auto const writeReady = [&] { theirs = ready.dump(); };
    bench::Comparison const comparison(401, 2);
    comparison.print("writing " + name, write, "the library", convertAndWrite);
    comparison.print("writing " + name + ", already converted", write, "the library", writeReady);
    if (ours != theirs) {
        std::fprintf(stderr, "  The two texts differ.\n");
        std::exit(EXIT_FAILURE);
    }

    platform::Data const data { ours };
    std::optional<Value> read;
    nlohmann::json parsed;
    comparison.print(
        "reading " + name, [&] { read = *serialization.jsonObject(data); }, "the library",
        [&] { parsed = nlohmann::json::parse(data.bytes); });
}

}

int main()
{
    std::fprintf(stderr, "JSON\n");
    measure("an upload of 500 events", makeUpload());
    measure("500 texts with escapes", makeTexts());
    measure("1,000 numbers", makeNumbers());
    return EXIT_SUCCESS;
}
