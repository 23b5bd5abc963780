#include "ZelvoraAdapters/uikit/Foundation/Values.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

/// A string of any units: the system's own ones refuse some here, which an engine may hand over.
@interface ZLVUnits : NSString {
@public
    std::vector<unichar> _units;
}
+ (NSString*)stringOf:(std::vector<unichar>)units;
@end

@implementation ZLVUnits

+ (NSString*)stringOf:(std::vector<unichar>)units
{
    ZLVUnits* made = [[ZLVUnits alloc] init];
    made->_units = std::move(units);
    return made;
}

- (NSUInteger)length
{
    return _units.size();
}

- (unichar)characterAtIndex:(NSUInteger)index
{
    return _units.at(index);
}

@end

namespace zelvora::tests {

using platform::Array;
using platform::Dictionary;
using platform::Null;
using platform::Value;
using uikit::Nulls;
using uikit::objectOf;
using uikit::stringOf;
using uikit::textOf;
using uikit::valueOf;

namespace {

id nestedArrays(std::size_t depth)
{
    id nested = @[];
    for (std::size_t level = 1; level < depth; ++level)
        nested = @[ nested ];
    return nested;
}

}

TEST(ValuesTest, TextIsKeptByteForByte)
{
    using namespace std::string_literals;
    for (auto const& text : { ""s, "plain"s, "텍스트"s, "\xc2\x80 \xef\xbf\xbf 😀"s, "a\0b"s }) {
        EXPECT_EQ(textOf(stringOf(text)), text);
        EXPECT_EQ(valueOf(objectOf(text)), Value(text));
    }
    EXPECT_EQ(textOf(nil), "");
}

TEST(ValuesTest, TextThatIsNotUTF8IsNoObject)
{
    EXPECT_TRUE(stringOf("\xff") == nil);
    EXPECT_TRUE(stringOf("\xed\xa0\x80") == nil);
    EXPECT_TRUE(objectOf(Array { 1, "\xff" }) == nil);
    EXPECT_TRUE(objectOf(Dictionary { { "\xff", 1 } }) == nil);
}

TEST(ValuesTest, ALoneSurrogateBecomesAReplacementCharacter)
{
    EXPECT_EQ(textOf([ZLVUnits stringOf: { 'a', 0xd83d }]), "a\xef\xbf\xbd");
    EXPECT_EQ(textOf([ZLVUnits stringOf: { 0xde00, 'b' }]),
        "\xef\xbf\xbd"
        "b");
    EXPECT_EQ(textOf([ZLVUnits stringOf: { 0xd83d, 0xd83d, 0xde00 }]), "\xef\xbf\xbd😀");
}

TEST(ValuesTest, OnlyTheTwoBooleansAreBooleans)
{
    EXPECT_EQ(valueOf(@YES), Value(true));
    EXPECT_EQ(valueOf(@NO), Value(false));
    for (NSNumber* one : { @1, @1.0, @1LL, [NSNumber numberWithChar:1] })
        EXPECT_EQ(valueOf(one), Value(1));
    EXPECT_EQ(valueOf(@0), Value(0));
    EXPECT_EQ(objectOf(true), @YES);
    EXPECT_TRUE(valueOf(objectOf(Value(1))) == Value(1));
}

TEST(ValuesTest, AnIntegerThatNoDoubleCanHoldIsExact)
{
    for (auto const number : { std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min(),
             (std::int64_t { 1 } << 53) + 1, -(std::int64_t { 1 } << 53) - 1 }) {
        EXPECT_EQ(valueOf([NSNumber numberWithLongLong:number]), Value(number));
        EXPECT_EQ(valueOf(objectOf(Value(number))), Value(number));
    }
    auto const largest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(valueOf([NSNumber numberWithUnsignedLongLong:largest]), Value(largest));
    EXPECT_EQ([static_cast<NSNumber*>(objectOf(Value(largest))) unsignedLongLongValue], largest);
}

TEST(ValuesTest, EveryKindIsKept)
{
    Value const value =
        Dictionary { { "null", Null {} }, { "date", platform::Date { 1.5 } }, { "data", platform::Data { "\xff" } },
            { "array", Array { 1.5, "x", false, Array {} } }, { "", Dictionary {} } };
    EXPECT_EQ(valueOf(objectOf(value)), value);
    EXPECT_EQ(valueOf([NSNull null]), Value());
}

TEST(ValuesTest, AnObjectOfAnotherClassMakesTheWholeValueAbsent)
{
    NSObject* other = [[NSObject alloc] init];
    EXPECT_EQ(valueOf(nil), std::nullopt);
    EXPECT_EQ(valueOf(other), std::nullopt);
    EXPECT_EQ(valueOf(@[ @1, @[ other ] ]), std::nullopt);
    EXPECT_EQ(valueOf(@ { @"key" : other }), std::nullopt);
    EXPECT_EQ(valueOf(@{@1 : @"a key that is no text"}), std::nullopt);
}

TEST(ValuesTest, WhatNestsTooDeepIsAbsent)
{
    constexpr auto limit = Value::maximumNesting;
    auto const deepest = valueOf(nestedArrays(limit));
    ASSERT_TRUE(deepest);
    EXPECT_EQ(deepest->nesting(), limit);
    EXPECT_TRUE(objectOf(*deepest) != nil);
    EXPECT_EQ(valueOf(nestedArrays(limit + 1)), std::nullopt);
    EXPECT_EQ(valueOf(@ { @"deep" : nestedArrays(limit) }), std::nullopt);
    EXPECT_TRUE(objectOf(Array { *deepest }) == nil);
    EXPECT_TRUE(objectOf(Dictionary { { "deep", *deepest } }) == nil);
}

TEST(ValuesTest, AReservedDictionaryStandsForANullMarkerReversibly)
{
    Value value = Null {};
    for (int layer = 0; layer < 5; ++layer) {
        id const object = objectOf(Array { value }, Nulls::Reserved);
        EXPECT_EQ(valueOf(object, Nulls::Reserved), Value(Array { value })) << layer;
        EXPECT_FALSE([[object objectAtIndex:0] isKindOfClass:[NSNull class]]);
        value = Dictionary { { "ZelvoraSDK_null", value } };
    }
    for (auto const& other : { Value(""), Value("text"), Value(1), Value(Array { Null {} }), Value(Dictionary {}),
             Value(Dictionary { { "ZelvoraSDK_null", "" }, { "second", 1 } }) }) {
        Value const wrapped = Dictionary { { "ZelvoraSDK_null", other } };
        EXPECT_EQ(valueOf(objectOf(wrapped, Nulls::Reserved), Nulls::Reserved), wrapped) << debugDescription(wrapped);
    }
}

TEST(ValuesTest, AReservedDictionaryDoesNotAddToTheNesting)
{
    Value value = Null {};
    for (std::size_t level = 0; level < Value::maximumNesting; ++level)
        value = Array { value };
    EXPECT_EQ(valueOf(objectOf(value, Nulls::Reserved), Nulls::Reserved), value);
}

}
