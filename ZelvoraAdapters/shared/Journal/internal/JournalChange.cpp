#include "ZelvoraAdapters/shared/Journal/internal/JournalChange.h"

#include "ZelvoraAdapters/shared/Journal/internal/ByteReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/ByteWriting.h"
#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Date.h"

#include <bit>
#include <utility>

namespace zelvora::shared {

using platform::Array;
using platform::Value;

namespace {

void appendPrefix(std::string& payload, ChangeKind kind, std::string_view key)
{
    payload.push_back(static_cast<char>(kind));
    appendLengthPrefixed(payload, key);
}

bool haveSameBits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// Containers are compared by identity only: walking them could cost more than writing an equal value again.
bool areCheaplyEqual(Value const& a, Value const& b)
{
    if (a.kind() != b.kind())
        return false;
    switch (a.kind()) {
    case Value::Kind::Number:
        return a.largeInteger() == b.largeInteger() && haveSameBits(*a.number(), *b.number());
    case Value::Kind::Date:
        return haveSameBits(a.date()->timeIntervalSince1970, b.date()->timeIntervalSince1970);
    case Value::Kind::Null:
    case Value::Kind::Boolean:
    case Value::Kind::Text:
        return a == b;
    case Value::Kind::Data:
        return a.data() == b.data();
    case Value::Kind::Array:
        return a.array() == b.array();
    case Value::Kind::Dictionary:
        return a.dictionary() == b.dictionary();
    }
    return false;
}

ChangeSize appendSet(std::string& payload, std::string_view key, Value const& value)
{
    auto const before = payload.size();
    appendSetPrefix(payload, key);
    appendValue(payload, value);
    return { .kind = ChangeKind::Set, .dropped = 0, .bytes = payload.size() - before };
}

ChangeSize appendExtend(std::string& payload, std::string_view key, Array const& array, Array::Difference difference)
{
    appendPrefix(payload, ChangeKind::Extend, key);
    appendVarint(payload, difference.dropped);
    auto const count = array.size() - difference.firstAppended;
    appendVarint(payload, count);
    auto const before = payload.size();
    if (count == 1)
        appendValue(payload, array.at(difference.firstAppended));
    else
        for (auto const& element : array.droppingFirst(difference.firstAppended))
            appendValue(payload, element);
    return { .kind = ChangeKind::Extend, .dropped = difference.dropped, .bytes = payload.size() - before };
}

std::optional<JournalChange> readSet(ByteReader& in, std::string_view key, std::size_t before)
{
    auto value = readValue(in);
    if (!value)
        return std::nullopt;
    JournalChange change;
    change.size = { .kind = ChangeKind::Set, .dropped = 0, .bytes = before - in.remaining() };
    change.key = key;
    change.value = *std::move(value);
    return change;
}

std::optional<JournalChange> readExtend(ByteReader& in, std::string_view key)
{
    auto const dropped = in.varint();
    auto const count = in.varint();
    if (!dropped || !count)
        return std::nullopt;
    JournalChange change;
    change.key = key;
    auto const before = in.remaining();
    for (std::uint64_t i = 0; i < *count; ++i) {
        auto element = readValue(in, Value::maximumNesting - 1);
        if (!element)
            return std::nullopt;
        change.appended.push_back(*std::move(element));
    }
    change.size = {
        .kind = ChangeKind::Extend, .dropped = static_cast<std::size_t>(*dropped), .bytes = before - in.remaining()
    };
    return change;
}

std::optional<JournalChange> readChange(ByteReader& in)
{
    auto const before = in.remaining();
    auto const kind = in.byte();
    auto const key = in.lengthPrefixed();
    if (!key)
        return std::nullopt;
    switch (static_cast<ChangeKind>(*kind)) {
    case ChangeKind::Set:
        return readSet(in, *key, before);
    case ChangeKind::Extend:
        return readExtend(in, *key);
    case ChangeKind::Remove:
        JournalChange change;
        change.key = *key;
        return change;
    }
    return std::nullopt;
}

}

std::optional<ChangeSize> appendChange(
    std::string& payload, std::string_view key, Value const* stored, Value const* wanted)
{
    if (!wanted) {
        if (!stored)
            return std::nullopt;
        appendPrefix(payload, ChangeKind::Remove, key);
        return ChangeSize {};
    }
    if (!stored)
        return appendSet(payload, key, *wanted);
    if (areCheaplyEqual(*stored, *wanted))
        return std::nullopt;
    auto const* const array = wanted->array();
    auto const* const older = stored->array();
    auto const difference = array && older ? array->differenceFrom(*older) : std::nullopt;
    if (!difference)
        return appendSet(payload, key, *wanted);
    if (difference->dropped == 0 && difference->firstAppended == array->size())
        return std::nullopt;
    return appendExtend(payload, key, *array, *difference);
}

void appendSetPrefix(std::string& payload, std::string_view key)
{
    appendPrefix(payload, ChangeKind::Set, key);
}

std::optional<std::vector<JournalChange>> readChanges(std::string_view payload)
{
    std::vector<JournalChange> changes;
    for (ByteReader in { payload }; !in.isAtEnd();) {
        auto change = readChange(in);
        if (!change)
            return std::nullopt;
        changes.push_back(*std::move(change));
    }
    return changes;
}

}
