#pragma once

#include "ZelvoraContract/support/Record.h"
#include "ZelvoraPlatform/Foundation/URL.h"
#include "ZelvoraPlatform/Platform.h"

#include <gtest/gtest.h>

#include <string>

namespace zelvora::tests {

/// What every adapter's application promises. In a harness's system, another app is registered
/// for the scheme "zelvora-test" and none for "zelvora-unknown", and the app itself is in the background:
///
///     void activate();
///     void deactivate();
///     // The URLs that the other app has received.
///     std::vector<std::string> openedURLs();
///     // Runs the adapter until `done` returns true; false after half a minute.
///     bool runUntil(std::function<bool()> const& done);
template<typename Harness>
class ApplicationContract : public testing::Test {
protected:
    static platform::URL url(std::string const& text) { return *platform::URL::parse(text); }
    static platform::UIApplication& application() { return platform::Platform::current().application(); }

    Harness m_harness;
};

TYPED_TEST_SUITE_P(ApplicationContract);

TYPED_TEST_P(ApplicationContract, KnowsWhichSchemesItCanOpenInAnyLetterCase)
{
    EXPECT_TRUE(this->application().canOpenURL(this->url("zelvora-test:one")));
    EXPECT_TRUE(this->application().canOpenURL(this->url("Zelvora-TEST://two")));
    EXPECT_FALSE(this->application().canOpenURL(this->url("zelvora-unknown:three")));
    EXPECT_FALSE(this->application().canOpenURL(this->url("no/scheme")));
}

TYPED_TEST_P(ApplicationContract, OpensAURLInTheAppThatIsRegistered)
{
    this->application().open(this->url("zelvora-test:buy?what=a%20b"));
    EXPECT_TRUE(this->m_harness.runUntil([this] { return !this->m_harness.openedURLs().empty(); }));
    EXPECT_EQ(this->m_harness.openedURLs(), (std::vector<std::string> { "zelvora-test:buy?what=a%20b" }));
}

TYPED_TEST_P(ApplicationContract, PostsDidBecomeActiveEachTimeAfterTheStateChanged)
{
    using State = platform::UIApplicationState;
    auto& application = this->application();
    Record<State> states;
    auto const observer = std::make_shared<int>();
    platform::Platform::current().notificationCenter().addObserver(observer,
        platform::UIApplication::didBecomeActiveNotification,
        [&](platform::Notification const&) { states.add(application.applicationState()); });

    EXPECT_NE(application.applicationState(), State::Active);
    this->m_harness.activate();
    EXPECT_TRUE(this->m_harness.runUntil([&] { return states.size() == 1; }));
    this->m_harness.deactivate();
    EXPECT_TRUE(this->m_harness.runUntil([&] { return application.applicationState() != State::Active; }));
    this->m_harness.activate();
    EXPECT_TRUE(this->m_harness.runUntil([&] { return states.size() == 2; }));
    EXPECT_EQ(states.all(), (std::vector { State::Active, State::Active }));
}

REGISTER_TYPED_TEST_SUITE_P(ApplicationContract, KnowsWhichSchemesItCanOpenInAnyLetterCase,
    OpensAURLInTheAppThatIsRegistered, PostsDidBecomeActiveEachTimeAfterTheStateChanged);

}
