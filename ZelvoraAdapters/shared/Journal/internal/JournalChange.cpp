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

bool readSet(ByteReader& in, JournalChange& change)
{
    auto const before = in.rest();
    auto const shape = skipValue(in);
    if (!shape)
        return false;
    change.bytes = before.substr(0, before.size() - in.remaining());
    change.shape = *shape;
    return true;
}

bool readExtend(ByteReader& in, JournalChange& change)
{
    auto const dropped = in.varint();
    auto const count = in.varint();
    if (!dropped || !count)
        return false;
    auto const before = in.rest();
    for (std::uint64_t i = 0; i < *count; ++i) {
        auto const shape = skipValue(in, Value::maximumNesting - 1);
        if (!shape)
            return false;
        change.shape = *shape;
    }
    change.bytes = before.substr(0, before.size() - in.remaining());
    change.appended = *count;
    change.size.dropped = static_cast<std::size_t>(*dropped);
    change.size.bytes = change.bytes.size();
    return true;
}

bool readChange(ByteReader& in, JournalChange& change)
{
    auto const before = in.remaining();
    auto const kind = in.byte();
    auto const key = in.lengthPrefixed();
    if (!key)
        return false;
    change.key = *key;
    change.size.kind = static_cast<ChangeKind>(*kind);
    switch (change.size.kind) {
    case ChangeKind::Set:
        if (!readSet(in, change))
            return false;
        change.size.bytes = before - in.remaining();
        return true;
    case ChangeKind::Extend:
        return readExtend(in, change);
    case ChangeKind::Remove:
        return true;
    }
    return false;
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

bool readChanges(std::string_view payload, std::vector<JournalChange>& changes)
{
    changes.clear();
    for (ByteReader in { payload }; !in.isAtEnd();) {
        if (!readChange(in, changes.emplace_back()))
            return false;
    }
    return true;
}

}
