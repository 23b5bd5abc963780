#include "ZelvoraAdapters/uikit/Foundation/NotificationCenter.h"

#include "ZelvoraPlatform/Foundation/Array.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace zelvora::tests {

using platform::Dictionary;
using platform::Notification;

namespace {

class NotificationCenterTest : public testing::Test {
protected:
    void observe(std::string const& name)
    {
        m_center->addObserver(m_observer, name, [this](Notification const& told) { m_told.push_back(told); });
    }

    std::optional<uikit::NotificationCenter> m_center { std::in_place };
    NSNotificationCenter* m_native = [NSNotificationCenter defaultCenter];
    std::shared_ptr<int> m_observer = std::make_shared<int>(0);
    std::vector<Notification> m_told;
};

}

TEST_F(NotificationCenterTest, WhatTheHostPostsReachesOurObservers)
{
    observe("name");
    [m_native postNotificationName:@"name" object:@"a sender" userInfo:@{@"visible" : @YES}];
    [m_native postNotificationName:@"name" object:nil];
    [m_native postNotificationName:@"name" object:nil userInfo:@ { @"object" : [[NSObject alloc] init] }];
    EXPECT_EQ(m_told,
        (std::vector<Notification> { { "name", Dictionary { { "visible", true } } }, { "name", {} }, { "name", {} } }));
}

TEST_F(NotificationCenterTest, WhatWePostReachesTheHostsObserversOnce)
{
    __block int count = 0;
    __block NSNumber* visible = nil;
    id const observer = [m_native addObserverForName:@"name"
                                              object:nil
                                               queue:nil
                                          usingBlock:^(NSNotification* notification) {
                                              ++count;
                                              visible = [notification.userInfo objectForKey:@"visible"];
                                          }];
    observe("name");
    observe("name");
    m_center->post({ "name", Dictionary { { "visible", true } } });
    EXPECT_EQ(count, 1);
    EXPECT_TRUE([visible isEqual:@YES]);
    EXPECT_EQ(m_told.size(), 2U);
    [m_native removeObserver:observer];
}

TEST_F(NotificationCenterTest, ACenterThatIsGoneHearsNothing)
{
    observe("name");
    m_center.reset();
    [m_native postNotificationName:@"name" object:nil];
    EXPECT_TRUE(m_told.empty());
}

TEST_F(NotificationCenterTest, ANameThatIsNotUTF8IsNobodys)
{
    observe("\xff");
    m_center->post({ "\xff", {} });
    EXPECT_TRUE(m_told.empty());
}

}
