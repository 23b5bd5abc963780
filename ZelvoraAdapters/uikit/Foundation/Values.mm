#include "ZelvoraAdapters/uikit/Foundation/Values.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace zelvora::uikit {

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

constexpr char32_t replacement = 0xfffd;
// In the preferences, a dictionary with this entry alone is a null marker if the entry is text, and a dictionary that
// looks like one if the entry is a dictionary.
constexpr char const* reservedKey = "ZelvoraSDK_null";

bool isHighSurrogate(char32_t unit)
{
    return unit >= 0xd800 && unit < 0xdc00;
}

bool isLowSurrogate(char32_t unit)
{
    return unit >= 0xdc00 && unit < 0xe000;
}

void append(std::string& text, char32_t character)
{
    auto const byte = [&text](char32_t bits) { text.push_back(static_cast<char>(bits)); };
    auto const trail = [&](int shift) { byte(0x80 | (character >> shift & 0x3f)); };
    if (character < 0x80) {
        byte(character);
    } else if (character < 0x800) {
        byte(0xc0 | character >> 6);
        trail(0);
    } else if (character < 0x10000) {
        byte(0xe0 | character >> 12);
        trail(6);
        trail(0);
    } else {
        byte(0xf0 | character >> 18);
        trail(12);
        trail(6);
        trail(0);
    }
}

bool isReserved(Dictionary const& dictionary)
{
    return dictionary.size() == 1 && dictionary.begin()->first == reservedKey;
}

/// Makes objects of values. The depth is that of the value, which a reserved dictionary does not add to.
class ObjectMaker final {
public:
    explicit ObjectMaker(Nulls nulls) : m_nulls(nulls) { }

    [[nodiscard]] id make(Value const& value, std::size_t depth) const
    {
        switch (value.kind()) {
        case Value::Kind::Null:
            return makeNull();
        case Value::Kind::Boolean:
            return [NSNumber numberWithBool:*value.boolean() ? YES : NO];
        case Value::Kind::Number:
            return makeNumber(value);
        case Value::Kind::Text:
            return stringOf(*value.text());
        case Value::Kind::Date:
            return [NSDate dateWithTimeIntervalSince1970:value.date()->timeIntervalSince1970];
        case Value::Kind::Data:
            return [NSData dataWithBytes:value.data()->bytes.data() length:value.data()->bytes.size()];
        case Value::Kind::Array:
            return depth < Value::maximumNesting ? makeArray(*value.array(), depth + 1) : nil;
        case Value::Kind::Dictionary:
            return depth < Value::maximumNesting ? makeDictionary(*value.dictionary(), depth + 1) : nil;
        }
        return nil;
    }

private:
    [[nodiscard]] id makeNull() const
    {
        return m_nulls == Nulls::Native ? static_cast<id>([NSNull null]) : @ { stringOf(reservedKey) : @"" };
    }

    [[nodiscard]] static id makeNumber(Value const& value)
    {
        auto const integer = value.largeInteger();
        if (!integer)
            return [NSNumber numberWithDouble:*value.number()];
        if (!integer->isNegative)
            return [NSNumber numberWithUnsignedLongLong:integer->magnitude];
        return [NSNumber numberWithLongLong:static_cast<long long>(0 - integer->magnitude)];
    }

    [[nodiscard]] id makeArray(Array const& array, std::size_t depth) const
    {
        NSMutableArray* made = [NSMutableArray arrayWithCapacity:array.size()];
        for (auto const& element : array) {
            id const object = make(element, depth);
            if (!object)
                return nil;
            [made addObject:object];
        }
        return made;
    }

    [[nodiscard]] id makeDictionary(Dictionary const& dictionary, std::size_t depth) const
    {
        NSMutableDictionary* made = [NSMutableDictionary dictionaryWithCapacity:dictionary.size()];
        for (auto const& [key, value] : dictionary) {
            NSString* name = stringOf(key);
            id const object = make(value, depth);
            if (!name || !object)
                return nil;
            [made setObject:object forKey:name];
        }
        if (m_nulls == Nulls::Reserved && isReserved(dictionary))
            return @ { stringOf(reservedKey) : made };
        return made;
    }

    Nulls m_nulls;
};

/// Makes values of objects, with the same depth.
class ValueMaker final {
public:
    explicit ValueMaker(Nulls nulls) : m_nulls(nulls) { }

    [[nodiscard]] std::optional<Value> make(id object, std::size_t depth) const
    {
        if ([object isKindOfClass:[NSString class]])
            return Value(textOf(object));
        if ([object isKindOfClass:[NSNumber class]])
            return makeNumber(object);
        if ([object isKindOfClass:[NSArray class]])
            return depth < Value::maximumNesting ? makeArray(object, depth + 1) : std::nullopt;
        if ([object isKindOfClass:[NSDictionary class]])
            return makeDictionary(object, depth);
        if ([object isKindOfClass:[NSDate class]])
            return Value(platform::Date { static_cast<NSDate*>(object).timeIntervalSince1970 });
        if ([object isKindOfClass:[NSData class]])
            return Value(platform::Data { bytesOf(object) });
        if ([object isKindOfClass:[NSNull class]])
            return Value();
        return std::nullopt;
    }

private:
    [[nodiscard]] static Value makeNumber(NSNumber* number)
    {
        // A number that is 1 equals the boolean, but is another object.
        if (number == [NSNumber numberWithBool:YES])
            return true;
        if (number == [NSNumber numberWithBool:NO])
            return false;
        // The type encodings of integers, as the language defines them.
        switch (*number.objCType) {
        case 'c':
        case 's':
        case 'i':
        case 'l':
        case 'q':
            return number.longLongValue;
        case 'C':
        case 'S':
        case 'I':
        case 'L':
        case 'Q':
            return number.unsignedLongLongValue;
        default:
            return number.doubleValue;
        }
    }

    [[nodiscard]] static std::string bytesOf(NSData* data)
    {
        return { static_cast<char const*>(data.bytes), data.length };
    }

    [[nodiscard]] std::optional<Value> makeArray(NSArray* array, std::size_t depth) const
    {
        std::vector<Value> elements;
        elements.reserve(array.count);
        for (id object in array) {
            auto element = make(object, depth);
            if (!element)
                return std::nullopt;
            elements.push_back(*std::move(element));
        }
        return Value(Array(elements));
    }

    [[nodiscard]] std::optional<Value> makeDictionary(NSDictionary* dictionary, std::size_t depth) const
    {
        id const reserved = m_nulls == Nulls::Reserved ? reservedEntryOf(dictionary) : nil;
        if ([reserved isKindOfClass:[NSString class]])
            return Value();
        if (depth == Value::maximumNesting)
            return std::nullopt;
        return makeEntries(reservedEntryOf(reserved) ? reserved : dictionary, depth + 1);
    }

    [[nodiscard]] static id reservedEntryOf(id object)
    {
        if (![object isKindOfClass:[NSDictionary class]])
            return nil;
        auto* const dictionary = static_cast<NSDictionary*>(object);
        return dictionary.count == 1 ? [dictionary objectForKey:stringOf(reservedKey)] : nil;
    }

    [[nodiscard]] std::optional<Value> makeEntries(NSDictionary* dictionary, std::size_t depth) const
    {
        Dictionary::Entries entries;
        entries.reserve(dictionary.count);
        for (id key in dictionary) {
            if (![key isKindOfClass:[NSString class]])
                return std::nullopt;
            auto value = make([dictionary objectForKey:key], depth);
            if (!value)
                return std::nullopt;
            entries.emplace_back(textOf(key), *std::move(value));
        }
        return Value(Dictionary(std::move(entries)));
    }

    Nulls m_nulls;
};

}

NSString* stringOf(std::string_view text)
{
    // Asked first, because some systems repair what is not UTF-8.
    if (!platform::isValidUTF8(text))
        return nil;
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

std::string textOf(NSString* string)
{
    std::vector<unichar> units(string.length);
    if (units.empty())
        return {};
    [string getCharacters:units.data() range:NSRange { 0, units.size() }];
    std::string text;
    text.reserve(units.size());
    for (std::size_t index = 0; index < units.size(); ++index) {
        char32_t character = units[index];
        bool const isPair = isHighSurrogate(character) && index + 1 < units.size() && isLowSurrogate(units[index + 1]);
        if (isPair)
            character = 0x10000 + ((character - 0xd800) << 10) + (units[++index] - 0xdc00);
        else if (isHighSurrogate(character) || isLowSurrogate(character))
            character = replacement;
        append(text, character);
    }
    return text;
}

id objectOf(Value const& value, Nulls nulls)
{
    return ObjectMaker(nulls).make(value, 0);
}

std::optional<Value> valueOf(id object, Nulls nulls)
{
    return ValueMaker(nulls).make(object, 0);
}

}
