#include "tests/uikit/module/SurfaceTest.h"

#include <cmath>

namespace zelvora::tests {

namespace {

class StorageTest : public SurfaceTest {
protected:
    StorageTest() { errorLines(); }
};

TEST_F(StorageTest, EveryKindOfPropertyListComesBack)
{
    NSData* const bytes = [NSData dataWithBytes:"a\0b" length:3];
    NSDate* const date = [NSDate dateWithTimeIntervalSince1970:1000];
    NSDictionary* const value =
        @{@"text" : @"공유",
            @"number" : @2.5,
            @"yes" : @YES,
            @"one" : @1,
            @"list" : @[ @1, @"b" ]};
    [ZelvoraStorage set:value forKey:@"map" expireSec:nil];
    [ZelvoraStorage set:bytes forKey:@"bytes" expireSec:nil];
    [ZelvoraStorage set:date forKey:@"date" expireSec:nil];

    EXPECT_TRUE([[ZelvoraStorage getForKey:@"map"] isEqual:value]);
    EXPECT_TRUE([[ZelvoraStorage getForKey:@"bytes"] isEqual:bytes]);
    EXPECT_TRUE([[ZelvoraStorage getForKey:@"date"] isEqual:date]);
}

TEST_F(StorageTest, ABooleanIsNotANumber)
{
    [ZelvoraStorage set:@YES forKey:@"yes" expireSec:nil];
    [ZelvoraStorage set:@1 forKey:@"one" expireSec:nil];
    EXPECT_EQ([ZelvoraStorage getForKey:@"yes"], @YES);
    EXPECT_NE([ZelvoraStorage getForKey:@"one"], @YES);
    EXPECT_EQ([[ZelvoraStorage getForKey:@"one"] doubleValue], 1.0);
}

TEST_F(StorageTest, ANullInsideAContainerIsKept)
{
    NSArray* const value = @[ [NSNull null], @ { @"a" : [NSNull null] } ];
    [ZelvoraStorage set:value forKey:@"nulls" expireSec:nil];
    EXPECT_TRUE([[ZelvoraStorage getForKey:@"nulls"] isEqual:value]);
}

TEST_F(StorageTest, WhatIsNoPropertyListIsRefusedWithOneErrorLineAndWhatWasStoredStays)
{
    [ZelvoraStorage set:@"before" forKey:@"a" expireSec:nil];
    NSMutableArray* const refused = [NSMutableArray arrayWithCapacity:4];
    [refused addObject:[[NSObject alloc] init]];
    [refused addObject:@[ [[NSObject alloc] init] ]];
    [refused addObject:@{@1 : @"a key that is not text"}];
    [refused addObject:[NSNull null]];
    for (id value in refused) {
        [ZelvoraStorage set:value forKey:@"a" expireSec:nil];
        EXPECT_EQ(
            errorLines(), std::vector<std::string> { "set(forKey: a) refused a value that is not a property list" });
        EXPECT_EQ(textOf([ZelvoraStorage getStringForKey:@"a"]), "before");
    }
}

TEST_F(StorageTest, AValueThatNestsTooDeepIsRefused)
{
    id value = @"leaf";
    for (int level = 0; level < 513; ++level)
        value = @[ value ];
    [ZelvoraStorage set:value forKey:@"deep" expireSec:nil];
    EXPECT_EQ(errorLines().size(), 1U);
    EXPECT_EQ([ZelvoraStorage getForKey:@"deep"], nil);
}

TEST_F(StorageTest, NilRemovesWhatIsStored)
{
    [ZelvoraStorage set:@"a" forKey:@"a" expireSec:nil];
    [ZelvoraStorage set:nil forKey:@"a" expireSec:nil];
    EXPECT_EQ([ZelvoraStorage getForKey:@"a"], nil);
    EXPECT_TRUE(errorLines().empty());
}

TEST_F(StorageTest, AValueExpires)
{
    [ZelvoraStorage set:@"a" forKey:@"long" expireSec:@3600];
    [ZelvoraStorage set:@"a" forKey:@"short" expireSec:@(-1)];
    EXPECT_EQ(textOf([ZelvoraStorage getForKey:@"long"]), "a");
    EXPECT_EQ([ZelvoraStorage getForKey:@"short"], nil);
}

TEST_F(StorageTest, GetStringIsForTextOnly)
{
    [ZelvoraStorage set:@7 forKey:@"a" expireSec:nil];
    EXPECT_EQ([ZelvoraStorage getStringForKey:@"a"], nil);
    [ZelvoraStorage set:@"text" forKey:@"a" expireSec:nil];
    EXPECT_EQ(textOf([ZelvoraStorage getStringForKey:@"a"]), "text");
    [ZelvoraStorage removeForKey:@"a"];
    EXPECT_EQ([ZelvoraStorage getStringForKey:@"a"], nil);
}

TEST_F(StorageTest, TheShopIdIsKept)
{
    EXPECT_EQ([ZelvoraStorage getValidShopId], nil);
    [ZelvoraStorage saveShopId:@"mall"];
    EXPECT_EQ(textOf([ZelvoraStorage getValidShopId]), "mall");
    EXPECT_EQ(textOf([ZelvoraStorage getForKey:@"shop_id"]), "mall");
}

TEST_F(StorageTest, EventsAreQueuedInOrderAndRemovedFromTheFront)
{
    EXPECT_EQ([ZelvoraStorage getEventTrackingData].count, 0U);
    for (NSString* name in @[ @"a", @"b", @"c" ])
        [ZelvoraStorage saveEventTrackingData:@ { @"eventId" : name, @"nothing" : [NSNull null] }];
    [ZelvoraStorage removeEventTrackingDataWithCount:2];
    NSArray* const left = [ZelvoraStorage getEventTrackingData];
    ASSERT_EQ(left.count, 1U);
    NSDictionary* const last = @ { @"eventId" : @"c", @"nothing" : [NSNull null] };
    EXPECT_TRUE([[left objectAtIndex:0] isEqual:last]);
    [ZelvoraStorage clearEventTrackingData];
    EXPECT_EQ([ZelvoraStorage getEventTrackingData].count, 0U);
}

TEST_F(StorageTest, AnEventThatIsNoPropertyListIsRefusedWithOneErrorLine)
{
    [ZelvoraStorage saveEventTrackingData:@ { @"a" : [[NSObject alloc] init] }];
    EXPECT_EQ(errorLines(),
        std::vector<std::string> { "saveEventTrackingData refused an event that is not a property list" });
    EXPECT_EQ([ZelvoraStorage getEventTrackingData].count, 0U);
}

TEST_F(StorageTest, ANegativeCountIsRefused)
{
    [ZelvoraStorage saveEventTrackingData:@ { @"eventId" : @"a" }];
    [ZelvoraStorage removeEventTrackingDataWithCount:-1];
    EXPECT_EQ(errorLines(), std::vector<std::string> { "removeEventTrackingData refused a negative count" });
    EXPECT_EQ([ZelvoraStorage getEventTrackingData].count, 1U);
}

}

}
