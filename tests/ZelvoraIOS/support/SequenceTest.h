#pragma once

#include "tests/ZelvoraIOS/support/SDKTest.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

constexpr char const* activation = platform::UIApplication::didBecomeActiveNotification;
constexpr char const* identifier = "0A1B2C3D-4E5F-4607-8899-AABBCCDDEEFF";
constexpr char const* foundShop = R"({"data": {"shopId": "shop-1"}})";

/// Drives the initialization sequence step by step.
class SequenceTest : public SDKTest {
protected:
    using Status = platform::ATTrackingAuthorizationStatus;
    using State = platform::UIApplicationState;

    using SDKTest::SDKTest;

    [[nodiscard]] static internal::Properties properties() { return ZelvoraSDKInspector::properties(); }
    [[nodiscard]] static bool isInitializing() { return ZelvoraSDKInspector::isInitializing(); }
    [[nodiscard]] memory::ATTrackingManager& tracking() { return platform.trackingManager(); }
    [[nodiscard]] std::size_t requestCount() { return platform.urlSession().requests().size(); }

    /// Initializes and runs the queues until the sequence waits for an answer or for time to pass.
    void begin(Configuration configuration = {})
    {
        ASSERT_TRUE(initialize(std::move(configuration)));
        platform.runUntilIdle();
    }
    void advance(double seconds)
    {
        platform.clock().advance(seconds);
        platform.runUntilIdle();
    }
    void answerLookup(std::string const& body = foundShop)
    {
        platform.urlSession().answer(200, body, 0);
        platform.runUntilIdle();
    }
    void answerPrompt(Status status)
    {
        tracking().answer(status);
        platform.runUntilIdle();
    }
};

}
