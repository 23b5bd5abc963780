// What docs/security.md says of the keys and the identifier: what is stored, and what leaves without permission.

#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <string>

namespace zelvora::tests {

namespace {

class StoredAndSentDataTest : public AuthorizedContainerTest {
protected:
    // With an event that a page saved and that was uploaded, and one more.
    void useShop()
    {
        initialize({ .userKey = "the user's key", .apiKey = "the app's key" });
        finishInitialization();
        sdk().start(presenter);
        platform.runUntilIdle();
        post({ { "action", "saveEvent" }, { "data", makeEvent("first") } });
        sdk().sendTrackingData();
        platform.runUntilIdle();
        platform.urlSession().answer(200);
        post({ { "action", "saveEvent" }, { "data", makeEvent("second") } });
        platform.runUntilIdle();
    }
};

}

TEST_F(StoredAndSentDataTest, NeitherKeyOfTheAppIsStored)
{
    useShop();
    auto const contents = platform.standardUserDefaults().contents();
    EXPECT_FALSE(contents.empty());
    for (auto const& [key, value] : contents) {
        auto const text = key + " " + description(value);
        EXPECT_EQ(text.find("the user's key"), std::string::npos) << text;
        EXPECT_EQ(text.find("the app's key"), std::string::npos) << text;
    }
}

TEST_F(StoredAndSentDataTest, WithoutPermissionTheIdentifierIsNeitherStoredNorSent)
{
    auto const identifier = platform.identifierManager().advertisingIdentifier();
    platform.trackingManager().setStatus(platform::ATTrackingAuthorizationStatus::Denied);
    useShop();
    for (auto const& [key, value] : platform.standardUserDefaults().contents())
        EXPECT_EQ(description(value).find(identifier), std::string::npos) << key;
    ASSERT_GE(platform.urlSession().requests().size(), 2U);
    for (auto const& request : platform.urlSession().requests())
        EXPECT_EQ(description(bodyOf(request)).find(identifier), std::string::npos);
    EXPECT_EQ(engine().url()->absoluteString().find(identifier), std::string::npos);
}

}
