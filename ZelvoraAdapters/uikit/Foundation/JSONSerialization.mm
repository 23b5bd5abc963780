#include "ZelvoraAdapters/uikit/Foundation/JSONSerialization.h"

#include "ZelvoraAdapters/uikit/Foundation/Errors.h"
#include "ZelvoraAdapters/uikit/Foundation/JSONGuard.h"
#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace zelvora::uikit {

using platform::Value;

namespace {

bool containsOnlyJSON(Value const& value, std::size_t depth)
{
    auto const isJSON = [depth](Value const& inner) { return containsOnlyJSON(inner, depth + 1); };
    switch (value.kind()) {
    case Value::Kind::Null:
    case Value::Kind::Boolean:
    case Value::Kind::Text:
        return true;
    case Value::Kind::Number:
        return std::isfinite(*value.number());
    case Value::Kind::Array:
        return depth < Value::maximumNesting && std::all_of(value.array()->begin(), value.array()->end(), isJSON);
    case Value::Kind::Dictionary:
        return depth < Value::maximumNesting
            && std::ranges::all_of(*value.dictionary(), [&](auto const& entry) { return isJSON(entry.second); });
    case Value::Kind::Date:
    case Value::Kind::Data:
        break;
    }
    return false;
}

std::unexpected<platform::Error> refusal(std::string reason)
{
    return std::unexpected(platform::Error { "ZelvoraSDK", 0, std::move(reason) });
}

}

bool JSONSerialization::isValidJSONObject(Value const& value) const
{
    return (value.array() || value.dictionary()) && containsOnlyJSON(value, 0);
}

std::expected<platform::Data, platform::Error> JSONSerialization::data(
    Value const& jsonObject, platform::JSONWritingOptions options) const
{
    if (!isValidJSONObject(jsonObject))
        return refusal("The value is no JSON object.");
    @autoreleasepool {
        id const object = objectOf(jsonObject);
        if (!object)
            return refusal("The value contains text that is not UTF-8.");
        bool const isPretty = options == platform::JSONWritingOptions::PrettyPrinted;
        auto const nativeOptions = isPretty ? NSJSONWritingPrettyPrinted : NSJSONWritingOptions {};
        NSError* error = nil;
        NSData* data = [NSJSONSerialization dataWithJSONObject:object options:nativeOptions error:&error];
        if (!data)
            return std::unexpected(errorOf(error));
        return platform::Data { { static_cast<char const*>(data.bytes), data.length } };
    }
}

std::expected<Value, platform::Error> JSONSerialization::jsonObject(platform::Data const& data) const
{
    if (!isSafeToReadAsJSON(data.bytes))
        return refusal("The data is no JSON text in UTF-8, or nests too deep.");
    @autoreleasepool {
        NSData* bytes = [NSData dataWithBytes:data.bytes.data() length:data.bytes.size()];
        NSError* error = nil;
        id const object = [NSJSONSerialization JSONObjectWithData:bytes options:NSJSONReadingOptions { } error:&error];
        if (!object)
            return std::unexpected(errorOf(error));
        auto value = valueOf(object);
        // A number that no double can hold is not finite here.
        if (!value || !isValidJSONObject(*value))
            return refusal("The data contains what no value stands for.");
        return *std::move(value);
    }
}

}
