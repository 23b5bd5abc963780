#include "ZelvoraAdapters/uikit/Foundation/UserDefaults.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <gtest/gtest.h>

namespace zelvora::tests {

using platform::Array;
using platform::Value;

namespace {

class UserDefaultsTest : public testing::Test {
protected:
    uikit::UserDefaults m_defaults;
    NSUserDefaults* m_native = [NSUserDefaults standardUserDefaults];
};

}

TEST_F(UserDefaultsTest, PlainValuesAreStoredAsTheHostWouldStoreThem)
{
    m_defaults.setObject("text", "text");
    m_defaults.setDouble(2.5, "number");
    m_defaults.setObject(Value(platform::Data { "bytes" }), "data");
    EXPECT_TRUE([[m_native objectForKey:@"text"] isEqual:@"text"]);
    EXPECT_TRUE([[m_native objectForKey:@"number"] isEqual:@2.5]);
    EXPECT_TRUE([[m_native objectForKey:@"data"] isEqual:[NSData dataWithBytes:"bytes" length:5]]);
}

TEST_F(UserDefaultsTest, WhatTheHostStoredIsRead)
{
    [m_native setObject:@[ @"a", @YES, @3 ] forKey:@"hosts"];
    EXPECT_EQ(m_defaults.object("hosts"), Value(Array { "a", true, 3 }));
}

TEST_F(UserDefaultsTest, AnEqualValueOfAnotherKindReplacesTheStoredOne)
{
    m_defaults.setObject(Value(Array { true }), "key");
    m_defaults.setObject(Value(Array { 1 }), "key");
    EXPECT_EQ(m_defaults.object("key"), Value(Array { 1 }));
    m_defaults.setObject(Value(Array { true }), "key");
    EXPECT_EQ(m_defaults.object("key"), Value(Array { true }));
}

TEST_F(UserDefaultsTest, WhatThePreferencesDoNotAcceptLeavesTheStoredValue)
{
    m_defaults.setObject(1, "key");
    m_defaults.setObject(Value(), "key");
    m_defaults.setObject("\xff", "key");
    EXPECT_EQ(m_defaults.object("key"), Value(1));
    m_defaults.setObject(1, "\xff");
    m_defaults.removeObject("\xff");
    EXPECT_EQ(m_defaults.object("\xff"), std::nullopt);
}

}
