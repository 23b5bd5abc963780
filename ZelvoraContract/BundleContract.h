#pragma once

#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/Foundation/Bundle.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace zelvora::tests {

/// What every app's bundle promises. A harness makes the app:
///
///     // The main bundle of an app with this identifier, or without one.
///     std::unique_ptr<platform::Bundle> makeBundle(std::optional<std::string> const& identifier);
template<typename Harness>
class BundleContract : public testing::Test {
protected:
    Harness m_harness;
};

TYPED_TEST_SUITE_P(BundleContract);

TYPED_TEST_P(BundleContract, TheIdentifierIsTheApps)
{
    for (std::string const identifier : { "com.example.app", "kr.co.example.Shop-2" })
        EXPECT_EQ(this->m_harness.makeBundle(identifier)->bundleIdentifier(), identifier);
}

TYPED_TEST_P(BundleContract, AnAppWithoutAnIdentifierHasNoneInItsBundle)
{
    EXPECT_EQ(this->m_harness.makeBundle(std::nullopt)->bundleIdentifier(), std::nullopt);
}

TYPED_TEST_P(BundleContract, ManyThreadsMayAskAtOnce)
{
    auto const bundle = this->m_harness.makeBundle("com.example.app");
    runOnThreads(4, [&](int) {
        for (int i = 0; i < 250; ++i)
            EXPECT_EQ(bundle->bundleIdentifier(), "com.example.app");
    });
}

REGISTER_TYPED_TEST_SUITE_P(
    BundleContract, TheIdentifierIsTheApps, AnAppWithoutAnIdentifierHasNoneInItsBundle, ManyThreadsMayAskAtOnce);

}
