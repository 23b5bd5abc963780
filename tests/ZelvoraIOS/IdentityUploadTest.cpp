#include "tests/ZelvoraIOS/support/SDKTest.h"
#include "tests/ZelvoraIOS/support/WatchingPlatform.h"

namespace zelvora::tests {

namespace {

using platform::Null;
using Messages = std::vector<LogMessage>;

// The upload of the identity keys, which nothing in the SDK calls.
class IdentityUploadTest : public SDKTest {
protected:
    IdentityUploadTest()
    {
        ZelvoraSDKInspector::change([](auto& properties) { properties.apiURL = "https://api.test"; });
    }

    [[nodiscard]] memory::URLSession& urlSession() { return platform.urlSession(); }
    [[nodiscard]] static std::optional<std::string> shopId() { return ZelvoraSDKInspector::properties().shopId; }
    void sendAndAnswer(int status, std::string body)
    {
        ZelvoraSDKInspector::sendData();
        urlSession().answer(status, std::move(body));
        platform.runUntilIdle();
    }
    void expectNothingKept()
    {
        EXPECT_EQ(shopId(), std::nullopt);
        EXPECT_TRUE(platform.standardUserDefaults().calls().empty());
    }
};

TEST_F(IdentityUploadTest, WithoutAnApiBaseNothingIsSent)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.apiURL = std::nullopt; });
    ZelvoraSDKInspector::sendData();
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(IdentityUploadTest, AnApiBaseThatIsNotAUrlSendsNothing)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.apiURL = ""; });
    ZelvoraSDKInspector::sendData();
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(IdentityUploadTest, TheRequestIsAPostToTheApiBaseUnchanged)
{
    ZelvoraSDKInspector::sendData();
    auto const requests = urlSession().requests();
    ASSERT_EQ(requests.size(), 1U);
    platform::URLRequest const expected {
        .url = *platform::URL::parse("https://api.test"),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json; utf-8" }, { "Accept", "application/json" } },
        .httpBody = requests.front().httpBody,
        .timeoutInterval = 60,
    };
    EXPECT_EQ(requests.front(), expected);
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(IdentityUploadTest, TheBodyHasTheFourIdentityKeys)
{
    ZelvoraSDKInspector::change([](auto& properties) {
        properties.userKey = "u";
        properties.apiKey = "k";
        properties.adId = "a";
        properties.packageName = "p";
    });
    ZelvoraSDKInspector::sendData();
    EXPECT_EQ(bodyOf(urlSession().requests().front()),
        Value(Dictionary { { "userKey", "u" }, { "apiKey", "k" }, { "adId", "a" }, { "packageName", "p" } }));
}

TEST_F(IdentityUploadTest, AbsentKeysAreSentAsNull)
{
    ZelvoraSDKInspector::sendData();
    EXPECT_EQ(bodyOf(urlSession().requests().front()),
        Value(Dictionary {
            { "userKey", Null {} }, { "apiKey", Null {} }, { "adId", Null {} }, { "packageName", Null {} } }));
}

TEST_F(IdentityUploadTest, AKeyThatJSONCannotRepresentSendsNothing)
{
    ZelvoraSDKInspector::change([](auto& properties) { properties.userKey = "\xff"; });
    ZelvoraSDKInspector::sendData();
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(IdentityUploadTest, AfterInitializeTheRequestGoesToTheApiBaseOfTheEnvironment)
{
    initializeAndFinish({ .isDev = true });
    ZelvoraSDKInspector::sendData();
    EXPECT_EQ(urlSession().requests().back().url.absoluteString(), *ZelvoraSDKInspector::properties().apiURL);
}

TEST_F(IdentityUploadTest, TheAnswersShopIdIsStoredSetAndLogged)
{
    sendAndAnswer(200, R"({"shop_id": "shop-5", "more": 1})");
    EXPECT_EQ(shopId(), "shop-5");
    EXPECT_EQ(ZelvoraStorage::getValidShopId(), "shop-5");
    EXPECT_EQ(stored(fullKey("shop_id_exp")), Value(86400));
    auto const messages = logMessages();
    ASSERT_GE(messages.size(), 2U);
    EXPECT_EQ(messages[0].text, "set(forKey: shop_id, value: " + debugDescription(Value("shop-5")) + ")");
    EXPECT_EQ(messages[1], (LogMessage { OSLogType::Debug, "Shop ID: shop-5" }));
}

TEST_F(IdentityUploadTest, AnAnswerThatIsNotJSONIsLoggedAsAParsingError)
{
    for (std::string const body : { "not json", "", R"({"shop_id": )", "\xff" }) {
        platform.log().clear();
        sendAndAnswer(200, body);
        EXPECT_EQ(logMessages(), (Messages { { OSLogType::Error, "sendData JSON Parsing Error" } })) << body;
        expectNothingKept();
    }
}

TEST_F(IdentityUploadTest, JSONOfAnotherShapeIsIgnoredSilently)
{
    for (auto const* body : { "{}", "[]", R"({"shop_id": 5})", R"({"shop_id": null})", R"(["shop_id"])",
             R"({"data": {"shop_id": "a"}})", R"({"shopId": "a"})" }) {
        sendAndAnswer(200, body);
        EXPECT_TRUE(logMessages().empty()) << body;
        expectNothingKept();
    }
}

TEST_F(IdentityUploadTest, EveryStatusExcept200IsIgnoredSilently)
{
    for (auto const status : { 199, 201, 204, 299, 300, 404, 500 }) {
        sendAndAnswer(status, R"({"shop_id": "shop-5"})");
        sendAndAnswer(status, "not json");
        EXPECT_TRUE(logMessages().empty()) << status;
        expectNothingKept();
    }
}

TEST_F(IdentityUploadTest, AnAnswerThatIsNotHTTPIsIgnoredSilently)
{
    ZelvoraSDKInspector::sendData();
    urlSession().answerNotHTTP(R"({"shop_id": "shop-5"})");
    platform.runUntilIdle();
    EXPECT_TRUE(logMessages().empty());
    expectNothingKept();
}

TEST_F(IdentityUploadTest, ATransportErrorIsIgnoredSilently)
{
    ZelvoraSDKInspector::sendData();
    urlSession().fail(memory::URLSession::timedOut());
    platform.runUntilIdle();
    EXPECT_TRUE(logMessages().empty());
    expectNothingKept();
}

TEST_F(IdentityUploadTest, NothingInTheSDKSendsTheIdentity)
{
    saveEvents(1);
    initializeAndFinish();
    sdk().sendTrackingData();
    auto const apiBase = *ZelvoraSDKInspector::properties().apiURL;
    for (auto const& request : urlSession().requests())
        EXPECT_NE(request.url.absoluteString(), apiBase);
}

TEST(IdentityUploadOrderTest, TheShopIdIsStoredBeforeItIsSetAndSetBeforeItIsLogged)
{
    auto& platform = install<WatchingPlatform>();
    ZelvoraSDKInspector::change([](auto& properties) { properties.apiURL = "https://api.test"; });
    std::vector<std::optional<std::string>> steps;
    auto const note = [&steps] { steps.push_back(ZelvoraSDKInspector::properties().shopId); };
    platform.watchStoring([&note](std::string const& key) {
        if (key.ends_with("_shop_id"))
            note();
    });
    platform.watchLog([&note](std::string const& message) {
        if (message.starts_with("Shop ID: "))
            note();
    });
    ZelvoraSDKInspector::sendData();
    platform.memory.urlSession().answer(200, R"({"shop_id": "shop-5"})");
    platform.memory.runUntilIdle();
    EXPECT_EQ(steps, (std::vector<std::optional<std::string>> { std::nullopt, "shop-5" }));
}

}

}
