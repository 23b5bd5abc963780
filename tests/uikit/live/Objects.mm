#include "tests/uikit/live/Objects.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

namespace zelvora::live {

using platform::Value;

namespace {

NSArray* arrayOf(platform::Array const& elements)
{
    NSMutableArray* made = [NSMutableArray array];
    for (auto const& element : elements)
        [made addObject:objectOf(element)];
    return made;
}

NSDictionary* dictionaryOf(platform::Dictionary const& entries)
{
    NSMutableDictionary* made = [NSMutableDictionary dictionary];
    for (auto const& [key, value] : entries)
        [made setObject:objectOf(value) forKey:stringOf(key)];
    return made;
}

}

NSString* stringOf(std::string const& text)
{
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

id objectOf(Value const& value)
{
    switch (value.kind()) {
    case Value::Kind::Null:
    case Value::Kind::Data: // No page has any.
        return [NSNull null];
    case Value::Kind::Boolean:
        return [NSNumber numberWithBool:*value.boolean() ? YES : NO];
    case Value::Kind::Number:
        return [NSNumber numberWithDouble:*value.number()];
    case Value::Kind::Text:
        return stringOf(*value.text());
    case Value::Kind::Date:
        return [NSDate dateWithTimeIntervalSince1970:value.date()->timeIntervalSince1970];
    case Value::Kind::Array:
        return arrayOf(*value.array());
    case Value::Kind::Dictionary:
        return dictionaryOf(*value.dictionary());
    }
    return nil;
}

}
