#include "tests/ZelvoraIOS/support/ZelvoraSDKInspector.h"
#include "tests/live/LiveShop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <ostream>
#include <string>

namespace zelvora::tests {

namespace {

using examples::BodyFault;
using examples::Cut;
using examples::Fault;
using gtk::runMainLoopUntil;

struct Failure {
    std::string name;
    Fault fault;
    /// The beginning of the error's detail; absent if the host is not told of the failure.
    std::optional<std::string> detail;
};

void PrintTo(Failure const& failure, std::ostream* stream)
{
    *stream << failure.name;
}

class LookupFailureTest : public testing::TestWithParam<Failure> {
protected:
    LiveShop shop;
};

// The detail is the message of the loader or of the JSON reader.
constexpr char const* anything = "";

std::string nameOf(testing::TestParamInfo<Failure> const& info)
{
    return info.param.name;
}

}

TEST_P(LookupFailureTest, TheHostIsToldAndALaunchFailsForLackOfAShopId)
{
    shop.service().faults().set(examples::Target::Lookup, GetParam().fault);
    shop.initialize();
    ASSERT_TRUE(runMainLoopUntil([] { return !ZelvoraSDKInspector::isInitializing(); }, 60));

    auto const errors = shop.errors();
    if (!GetParam().detail) {
        EXPECT_TRUE(errors.empty());
    } else {
        ASSERT_EQ(errors.size(), 1U);
        EXPECT_EQ(errors.front().code(), "E200");
        EXPECT_TRUE(errors.front().detail().value_or("").starts_with(*GetParam().detail))
            << errors.front().detail().value_or("");
    }
    auto const result = ZelvoraSDK::shared().start(shop.presenter());
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), ZelvoraSDKError::shopIdNotInitialized());
    EXPECT_EQ(shop.service().faults().requests(examples::Target::Lookup), 1U) << "there is no second attempt";
}

INSTANTIATE_TEST_SUITE_P(Failures, LookupFailureTest,
    testing::Values(Failure { "ServerError", { .status = 500 }, "fetchShopId - 500" },
        Failure { "Created", { .status = 201 }, "fetchShopId - 201" },
        Failure { "NoContent", { .status = 204 }, "fetchShopId - 204" },
        Failure { "NotFound", { .status = 404 }, "fetchShopId - 404" },
        Failure { "CutBeforeTheAnswer", { .cut = Cut::BeforeAnswer }, anything },
        Failure { "CutInTheMiddle", { .cut = Cut::MidBody }, anything },
        Failure { "NotJSON", { .body = BodyFault::BrokenJson }, anything },
        Failure { "Empty", { .body = BodyFault::Empty }, anything },
        Failure { "ANumberForAShopId", { .body = BodyFault::WrongShape }, std::nullopt },
        // The host's loader reads answers up to a limit.
        Failure { "AHundredMegabytes", { .body = BodyFault::Huge, .bytes = 100'000'000 }, anything }),
    nameOf);

TEST(SlowLookupTest, ALaunchDuringASlowLookupHappensAfterIt)
{
    LiveShop shop;
    shop.service().faults().set(examples::Target::Lookup, { .delay = std::chrono::milliseconds(1500), .requests = 1 });
    shop.initialize();
    EXPECT_TRUE(shop.open());
    EXPECT_TRUE(shop.errors().empty());
}

}
