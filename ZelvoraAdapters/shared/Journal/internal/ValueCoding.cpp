#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"

#include "ZelvoraAdapters/shared/Journal/internal/ByteWriting.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>
#include <utility>

namespace zelvora::shared {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::LargeInteger;
using platform::Null;
using platform::Value;

namespace {

void appendTag(std::string& out, ValueTag tag)
{
    out.push_back(static_cast<char>(tag));
}

void appendNumber(std::string& out, ValueTag tag, double number)
{
    appendTag(out, tag);
    appendFixed(out, std::bit_cast<std::uint64_t>(number));
}

void appendLargeInteger(std::string& out, LargeInteger integer)
{
    appendTag(out, integer.isNegative ? ValueTag::Signed : ValueTag::Unsigned);
    appendFixed(out, integer.isNegative ? 0 - integer.magnitude : integer.magnitude);
}

void appendBytes(std::string& out, ValueTag tag, std::string_view bytes)
{
    appendTag(out, tag);
    appendLengthPrefixed(out, bytes);
}

void appendArray(std::string& out, Array const& array)
{
    appendArrayPrefix(out, array.size());
    for (auto const& element : array)
        appendValue(out, element);
}

void appendDictionary(std::string& out, Dictionary const& dictionary)
{
    appendTag(out, ValueTag::Dictionary);
    appendVarint(out, dictionary.size());
    for (auto const& [key, value] : dictionary) {
        appendLengthPrefixed(out, key);
        appendValue(out, value);
    }
}

std::optional<double> readNumber(ByteReader& in)
{
    auto const bits = in.fixed64();
    if (!bits)
        return std::nullopt;
    return std::bit_cast<double>(*bits);
}

std::optional<Value> readArray(ByteReader& in, std::size_t nesting)
{
    auto const count = in.varint();
    if (!count || nesting == 0)
        return std::nullopt;
    Array array;
    for (std::uint64_t i = 0; i < *count; ++i) {
        auto element = readValue(in, nesting - 1);
        if (!element)
            return std::nullopt;
        array = array.appending(*std::move(element));
    }
    return Value { std::move(array) };
}

std::optional<Value> readDictionary(ByteReader& in, std::size_t nesting)
{
    auto const count = in.varint();
    if (!count || nesting == 0)
        return std::nullopt;
    Dictionary::Entries entries;
    // A damaged count may be anything, but an entry has two bytes at least.
    entries.reserve(static_cast<std::size_t>(std::min<std::uint64_t>(*count, in.remaining() / 2)));
    for (std::uint64_t i = 0; i < *count; ++i) {
        auto const key = in.lengthPrefixed();
        if (!key)
            return std::nullopt;
        auto value = readValue(in, nesting - 1);
        if (!value)
            return std::nullopt;
        entries.emplace_back(std::string { *key }, *std::move(value));
    }
    return Value { Dictionary { std::move(entries) } };
}

std::optional<ValueShape> skipContainer(ByteReader& in, Value::Kind kind, std::size_t nesting)
{
    auto const count = in.varint();
    if (!count || nesting == 0)
        return std::nullopt;
    ValueShape shape { .kind = kind, .nesting = 1 };
    for (std::uint64_t i = 0; i < *count; ++i) {
        if (kind == Value::Kind::Dictionary && !in.lengthPrefixed())
            return std::nullopt;
        auto const item = skipValue(in, nesting - 1);
        if (!item)
            return std::nullopt;
        shape.nesting = std::max(shape.nesting, item->nesting + 1);
    }
    return shape;
}

}

void appendValue(std::string& out, Value const& value)
{
    switch (value.kind()) {
    case Value::Kind::Null:
        return appendTag(out, ValueTag::Null);
    case Value::Kind::Boolean:
        return appendTag(out, *value.boolean() ? ValueTag::True : ValueTag::False);
    case Value::Kind::Number:
        if (auto const integer = value.largeInteger())
            return appendLargeInteger(out, *integer);
        return appendNumber(out, ValueTag::Number, *value.number());
    case Value::Kind::Text:
        return appendBytes(out, ValueTag::Text, *value.text());
    case Value::Kind::Date:
        return appendNumber(out, ValueTag::Date, value.date()->timeIntervalSince1970);
    case Value::Kind::Data:
        return appendBytes(out, ValueTag::Data, value.data()->bytes);
    case Value::Kind::Array:
        return appendArray(out, *value.array());
    case Value::Kind::Dictionary:
        return appendDictionary(out, *value.dictionary());
    }
}

void appendArrayPrefix(std::string& out, std::size_t count)
{
    appendTag(out, ValueTag::Array);
    appendVarint(out, count);
}

std::optional<Value> readValue(ByteReader& in, std::size_t nesting)
{
    auto const tag = in.byte();
    if (!tag)
        return std::nullopt;
    switch (static_cast<ValueTag>(*tag)) {
    case ValueTag::Null:
        return Value { Null {} };
    case ValueTag::False:
        return Value { false };
    case ValueTag::True:
        return Value { true };
    case ValueTag::Number:
        return readNumber(in).transform([](double number) { return Value { number }; });
    case ValueTag::Unsigned:
        return in.fixed64().transform([](std::uint64_t integer) { return Value { integer }; });
    case ValueTag::Signed:
        return in.fixed64().transform([](std::uint64_t bits) { return Value { std::bit_cast<std::int64_t>(bits) }; });
    case ValueTag::Date:
        return readNumber(in).transform([](double seconds) { return Value { Date { seconds } }; });
    case ValueTag::Text:
        return in.lengthPrefixed().transform([](std::string_view text) { return Value { text }; });
    case ValueTag::Data:
        return in.lengthPrefixed().transform(
            [](std::string_view bytes) { return Value { Data { std::string { bytes } } }; });
    case ValueTag::Array:
        return readArray(in, nesting);
    case ValueTag::Dictionary:
        return readDictionary(in, nesting);
    }
    return std::nullopt;
}

std::optional<ValueShape> skipValue(ByteReader& in, std::size_t nesting)
{
    using Kind = Value::Kind;
    auto const tag = in.byte();
    if (!tag)
        return std::nullopt;
    auto const shapeIf = [](bool isThere, Kind kind) {
        return isThere ? std::optional(ValueShape { .kind = kind }) : std::nullopt;
    };
    switch (static_cast<ValueTag>(*tag)) {
    case ValueTag::Null:
        return ValueShape { .kind = Kind::Null };
    case ValueTag::False:
    case ValueTag::True:
        return ValueShape { .kind = Kind::Boolean };
    case ValueTag::Number:
    case ValueTag::Unsigned:
    case ValueTag::Signed:
        return shapeIf(in.fixed64().has_value(), Kind::Number);
    case ValueTag::Date:
        return shapeIf(in.fixed64().has_value(), Kind::Date);
    case ValueTag::Text:
        return shapeIf(in.lengthPrefixed().has_value(), Kind::Text);
    case ValueTag::Data:
        return shapeIf(in.lengthPrefixed().has_value(), Kind::Data);
    case ValueTag::Array:
        return skipContainer(in, Kind::Array, nesting);
    case ValueTag::Dictionary:
        return skipContainer(in, Kind::Dictionary, nesting);
    }
    return std::nullopt;
}

}
