#include "ZelvoraIOS/ZelvoraSDK/internal/ServiceAddresses.h"
#include "tests/ZelvoraIOS/support/RecordingPlatform.h"
#include "tests/ZelvoraIOS/support/SDKTest.h"
#include "tests/ZelvoraIOS/support/WatchingPlatform.h"
#include "tests/support/StandardOutput.h"

#include <algorithm>

namespace zelvora::tests {

namespace {

using internal::serviceAddresses;
using Errors = std::vector<std::optional<ZelvoraSDKError>>;
using Messages = std::vector<LogMessage>;
using Texts = std::vector<std::string>;

memory::Options deniedTracking()
{
    return { .trackingStatus = platform::ATTrackingAuthorizationStatus::Denied };
}

// The user has decided on tracking, so that the sequence waits for the lookup only.
class ShopIdLookupTest : public SDKTest {
protected:
    ShopIdLookupTest() : SDKTest(deniedTracking()) { }

    [[nodiscard]] static std::optional<std::string> shopId() { return ZelvoraSDKInspector::properties().shopId; }
    [[nodiscard]] memory::URLSession& urlSession() { return platform.urlSession(); }

    // Starts the sequence, expects the lookup's request and clears the log.
    void beginLookup(Configuration configuration = {})
    {
        ASSERT_TRUE(initialize(std::move(configuration)));
        platform.runUntilIdle();
        ASSERT_EQ(urlSession().unansweredCount(), 1U);
        platform.log().clear();
    }
    void answer(int status, std::string body)
    {
        urlSession().answer(status, std::move(body));
        platform.runUntilIdle();
        EXPECT_FALSE(ZelvoraSDKInspector::isInitializing()) << "the sequence continues whatever the lookup's result";
    }
    void expectFailure(Messages const& messages, std::string const& detail)
    {
        EXPECT_EQ(lookupMessages(), messages);
        EXPECT_EQ(errors, (Errors { ZelvoraSDKError::internalApiError(detail) }));
        EXPECT_EQ(shopId(), std::nullopt);
        EXPECT_EQ(stored(fullKey("shop_id")), std::nullopt);
    }
    void expectStatusFailure(std::string const& code, std::string const& body)
    {
        expectFailure(
            { { OSLogType::Error, "fetchShopId Error " + code + " - Error Body: " + body } }, "fetchShopId - " + code);
    }
    void expectSilence()
    {
        EXPECT_EQ(lookupMessages(), Messages {});
        EXPECT_EQ(errors, Errors {});
        EXPECT_EQ(shopId(), std::nullopt);
        EXPECT_EQ(stored(fullKey("shop_id")), std::nullopt);
    }
    // The log without the lines for reading the event queue at the end of the sequence.
    [[nodiscard]] Messages lookupMessages() const
    {
        auto messages = logMessages();
        std::erase_if(
            messages, [](LogMessage const& message) { return message.text.starts_with("get(forKey: tracking_event"); });
        return messages;
    }
};

TEST_F(ShopIdLookupTest, TheRequestIsAPostToTheLookupEndpointWithTheKeyAndTheProfile)
{
    beginLookup();
    auto const requests = urlSession().requests();
    ASSERT_EQ(requests.size(), 1U);
    platform::URLRequest const expected {
        .url = *platform::URL::parse(serviceAddresses().lookupEndpoint),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json" }, { "Accept", "application/json" } },
        .httpBody = requests.front().httpBody,
        .timeoutInterval = 60,
    };
    EXPECT_EQ(requests.front(), expected);
    EXPECT_EQ(bodyOf(requests.front()), Value(Dictionary { { "profile", "prd" }, { "api_key", "media-1" } }));
}

TEST_F(ShopIdLookupTest, TheBodyIsCompact)
{
    beginLookup();
    EXPECT_EQ(urlSession().requests().front().httpBody.bytes.find_first_of(" \n\t"), std::string::npos);
}

TEST_F(ShopIdLookupTest, DevelopmentSendsTheProfileDev)
{
    beginLookup({ .isDev = true });
    EXPECT_EQ(
        bodyOf(urlSession().requests().front()), Value(Dictionary { { "profile", "dev" }, { "api_key", "media-1" } }));
}

TEST_F(ShopIdLookupTest, TheApiKeyIsSentVerbatim)
{
    std::string const key = "\"quoted\" \\ / 키\n\u2028";
    beginLookup({ .apiKey = key });
    EXPECT_EQ(bodyOf(urlSession().requests().front()), Value(Dictionary { { "profile", "prd" }, { "api_key", key } }));
}

TEST_F(ShopIdLookupTest, AnEmptyApiKeyIsSentEmpty)
{
    beginLookup({ .apiKey = "" });
    EXPECT_EQ(bodyOf(urlSession().requests().front()), Value(Dictionary { { "profile", "prd" }, { "api_key", "" } }));
}

TEST_F(ShopIdLookupTest, TheUrlAndThenTheBodyAreLoggedAtDebugLevel)
{
    StandardOutput const output;
    EXPECT_TRUE(initialize({ .apiKey = "secret" }));
    platform.runUntilIdle();
    auto const body = urlSession().requests().front().httpBody.bytes;
    Texts expected { "fetchShopId Request URL: " + serviceAddresses().lookupEndpoint,
        "fetchShopId Request Body: " + body };
    EXPECT_NE(body.find("secret"), std::string::npos);
    Texts found;
    for (auto const& text : logMessages(OSLogType::Debug)) {
        if (text.starts_with("fetchShopId"))
            found.push_back(text);
    }
    EXPECT_EQ(found, expected);
    Texts printed;
    for (auto const& line : output.lines()) {
        if (line.starts_with("[ZelvoraSDK-debug] fetchShopId"))
            printed.push_back(line);
    }
    EXPECT_EQ(printed, (Texts { "[ZelvoraSDK-debug] " + expected[0], "[ZelvoraSDK-debug] " + expected[1] }));
}

TEST_F(ShopIdLookupTest, TheAnswersShopIdIsStoredForADayThenSetThenLogged)
{
    beginLookup();
    answer(200, R"({"data": {"shopId": "shop-7"}})");
    EXPECT_EQ(shopId(), "shop-7");
    EXPECT_EQ(stored(fullKey("shop_id")), "shop-7");
    EXPECT_EQ(stored(fullKey("shop_id_ts")), Value(platform.clock().now()));
    EXPECT_EQ(stored(fullKey("shop_id_exp")), Value(86400));
    EXPECT_EQ(lookupMessages(),
        (Messages { { OSLogType::Debug, "set(forKey: shop_id, value: " + debugDescription(Value("shop-7")) + ")" },
            { OSLogType::Debug, "Shop ID: shop-7" } }));
    EXPECT_TRUE(errors.empty());
}

TEST_F(ShopIdLookupTest, OtherMembersOfTheAnswerAreIgnoredAtBothLevels)
{
    beginLookup();
    answer(200, R"({"code": 0, "data": {"name": null, "shopId": "shop-7", "more": {"shopId": 1}}, "shopId": "no"})");
    EXPECT_EQ(shopId(), "shop-7");
}

TEST_F(ShopIdLookupTest, AnEmptyShopIdIsAccepted)
{
    beginLookup();
    answer(200, R"({"data": {"shopId": ""}})");
    EXPECT_EQ(shopId(), "");
    EXPECT_EQ(stored(fullKey("shop_id")), "");
}

TEST_F(ShopIdLookupTest, AStoredValidIdIsUsedWithoutARequest)
{
    ZelvoraStorage::saveShopId("kept");
    platform.clock().advance(86400);
    platform.log().clear();
    platform.standardUserDefaults().clearCalls();
    EXPECT_TRUE(initialize());
    platform.runUntilIdle();
    EXPECT_EQ(shopId(), "kept");
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_TRUE(errors.empty());
    EXPECT_TRUE(platform.log().holds(OSLogType::Debug, "Shop ID exists : kept"));
    EXPECT_FALSE(platform.log().holds(OSLogType::Debug, "Shop ID: kept"));
    EXPECT_TRUE(platform.standardUserDefaults().calls().empty()) << "its lifetime does not restart";
    EXPECT_FALSE(ZelvoraSDKInspector::isInitializing());
}

TEST_F(ShopIdLookupTest, AStoredIdIsUsedAlsoInAnotherEnvironmentAndForAnotherKey)
{
    initializeAndFinish({ .apiKey = "one", .isDev = false }, "shop-of-one");
    EXPECT_TRUE(initialize({ .apiKey = "two", .isDev = true }));
    platform.runUntilIdle();
    EXPECT_EQ(urlSession().requests().size(), 1U);
    EXPECT_EQ(shopId(), "shop-of-one");
}

TEST_F(ShopIdLookupTest, AnExpiredStoredIdIsDeletedAndLookedUpAgain)
{
    ZelvoraStorage::saveShopId("old");
    platform.clock().advance(86401);
    beginLookup();
    EXPECT_EQ(stored(fullKey("shop_id")), std::nullopt);
    answer(200, R"({"data": {"shopId": "new"}})");
    EXPECT_EQ(shopId(), "new");
}

TEST_F(ShopIdLookupTest, AStoredIdThatIsNotTextIsLookedUpAgain)
{
    ZelvoraStorage::set(42, "shop_id");
    beginLookup();
    answer(200, R"({"data": {"shopId": "new"}})");
    EXPECT_EQ(shopId(), "new");
}

TEST_F(ShopIdLookupTest, AnEndpointThatIsNotAUrlEndsTheLookupSilently)
{
    auto addresses = serviceAddresses();
    addresses.lookupEndpoint = "";
    platform.setServiceAddresses(addresses);
    EXPECT_TRUE(initialize());
    platform.runUntilIdle();
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(logMessages(OSLogType::Error), Texts {});
    for (auto const& message : logMessages())
        EXPECT_FALSE(message.text.starts_with("fetchShopId")) << message.text;
    EXPECT_FALSE(ZelvoraSDKInspector::isInitializing());
}

TEST_F(ShopIdLookupTest, ABodyThatCannotBeWrittenIsLoggedByItsDescriptionAloneAndReported)
{
    // JSON text cannot contain this byte.
    EXPECT_TRUE(initialize({ .apiKey = "\xff" }));
    platform.runUntilIdle();
    ASSERT_EQ(errors.size(), 1U);
    ASSERT_TRUE(errors.front() && errors.front()->detail());
    auto const description = *errors.front()->detail();
    EXPECT_FALSE(description.empty());
    EXPECT_EQ(errors.front(), ZelvoraSDKError::internalApiError(description));
    EXPECT_EQ(logMessages(OSLogType::Error), (Texts { description }));
    for (auto const& message : logMessages())
        EXPECT_FALSE(message.text.starts_with("fetchShopId")) << message.text;
    EXPECT_TRUE(urlSession().requests().empty());
    EXPECT_FALSE(ZelvoraSDKInspector::isInitializing());
}

TEST_F(ShopIdLookupTest, ATransportErrorIsLoggedAsAnExceptionAndReported)
{
    beginLookup();
    urlSession().fail(memory::URLSession::notConnected());
    platform.runUntilIdle();
    auto const description = memory::URLSession::notConnected().localizedDescription;
    expectFailure({ { OSLogType::Error, "fetchShopId Exception: " + description } }, description);
}

TEST_F(ShopIdLookupTest, ATimeoutIsATransportError)
{
    beginLookup();
    urlSession().fail(memory::URLSession::timedOut());
    platform.runUntilIdle();
    auto const description = memory::URLSession::timedOut().localizedDescription;
    expectFailure({ { OSLogType::Error, "fetchShopId Exception: " + description } }, description);
}

TEST_F(ShopIdLookupTest, ACancelledRequestIsATransportError)
{
    beginLookup();
    urlSession().fail(memory::URLSession::cancelled());
    platform.runUntilIdle();
    auto const description = memory::URLSession::cancelled().localizedDescription;
    expectFailure({ { OSLogType::Error, "fetchShopId Exception: " + description } }, description);
}

TEST_F(ShopIdLookupTest, AnAnswerThatIsNotHTTPIsReportedWithoutALogLine)
{
    beginLookup();
    urlSession().answerNotHTTP(R"({"data": {"shopId": "shop-7"}})");
    platform.runUntilIdle();
    expectFailure({}, "Not a HTTP response");
}

TEST_F(ShopIdLookupTest, Status500IsLoggedWithItsBodyAndReportedWithItsCode)
{
    beginLookup();
    answer(500, "oops");
    expectFailure({ { OSLogType::Error, "fetchShopId Error 500 - Error Body: oops" } }, "fetchShopId - 500");
    EXPECT_EQ(errors.front()->code(), "E200");
    EXPECT_EQ(errors.front()->errorDescription(), "Zelvora 서버 내부 통신 에러가 발생했습니다. fetchShopId - 500");
}

TEST_F(ShopIdLookupTest, EveryStatusExcept200IsAFailureWhateverTheBody)
{
    for (auto const status : { 100, 199, 201, 202, 204, 206, 299, 301, 304, 400, 401, 403, 404, 429, 503, 599 }) {
        errors.clear();
        beginLookup();
        std::string const body = R"({"data": {"shopId": "shop-7"}})";
        answer(status, body);
        expectStatusFailure(std::to_string(status), body);
    }
}

TEST_F(ShopIdLookupTest, AnErrorBodyThatIsNotUTF8IsLoggedAsNoErrorBody)
{
    beginLookup();
    answer(500, "\xc3\x28");
    expectFailure({ { OSLogType::Error, "fetchShopId Error 500 - Error Body: No error body" } }, "fetchShopId - 500");
}

TEST_F(ShopIdLookupTest, AnEmptyErrorBodyIsLoggedEmpty)
{
    beginLookup();
    answer(404, "");
    expectFailure({ { OSLogType::Error, "fetchShopId Error 404 - Error Body: " } }, "fetchShopId - 404");
}

TEST_F(ShopIdLookupTest, ABodyThatIsNotJSONIsLoggedAsAnExceptionAndReportedWithTheReadersDescription)
{
    auto const deep = std::string(600, '[') + std::string(600, ']');
    for (std::string const body : { "", "not json", "<html></html>", R"({"data": {"shopId": "shop-7"})", "{}}", "\xff",
             "42", R"("text")", "null", R"({'data': {}})", deep.c_str() }) {
        errors.clear();
        beginLookup();
        answer(200, body);
        ASSERT_EQ(errors.size(), 1U) << body;
        ASSERT_TRUE(errors.front()->detail()) << body;
        auto const read = platform.jsonSerialization().jsonObject({ body });
        ASSERT_FALSE(read) << body;
        auto const description = read.error().localizedDescription;
        EXPECT_FALSE(description.empty());
        expectFailure({ { OSLogType::Error, "fetchShopId Exception: " + description } }, description);
    }
}

TEST_F(ShopIdLookupTest, AShopIdThatIsANumberIsIgnoredSilently)
{
    beginLookup();
    answer(200, R"({"data": {"shopId": 42}})");
    expectSilence();
}

TEST_F(ShopIdLookupTest, JSONOfAnotherShapeIsIgnoredSilently)
{
    for (auto const* body :
        { "{}", "[]", R"([{"data": {"shopId": "a"}}])", R"({"data": null})", R"({"data": "shopId"})", R"({"data": []})",
            R"({"data": [{"shopId": "a"}]})", R"({"data": {}})", R"({"data": {"shopId": null}})",
            R"({"data": {"shopId": true}})", R"({"data": {"shopId": ["a"]}})", R"({"data": {"shopId": {"a": "b"}}})",
            R"({"data": {"shopid": "a"}})", R"({"Data": {"shopId": "a"}})", R"({"shopId": "a"})" }) {
        beginLookup();
        answer(200, body);
        expectSilence();
    }
}

TEST_F(ShopIdLookupTest, AHugeAnswerIsRead)
{
    beginLookup();
    std::string const filler(5'000'000, 'x');
    answer(200, R"({"filler": ")" + filler + R"(", "data": {"shopId": "shop-7"}})");
    EXPECT_EQ(shopId(), "shop-7");
}

TEST_F(ShopIdLookupTest, AHugeAnswerThatIsNotJSONFailsOnce)
{
    beginLookup();
    std::string body;
    body.resize(100'000'000);
    answer(200, std::move(body));
    EXPECT_EQ(errors.size(), 1U);
    EXPECT_EQ(logMessages(OSLogType::Error).size(), 1U);
    EXPECT_EQ(shopId(), std::nullopt);
}

TEST_F(ShopIdLookupTest, NoFailureNeedsAHandler)
{
    auto const begin = [this] {
        EXPECT_TRUE(sdk().initialize("user", "key", true, false, false));
        platform.runUntilIdle();
    };
    begin();
    urlSession().fail(memory::URLSession::timedOut());
    platform.runUntilIdle();
    begin();
    urlSession().answerNotHTTP();
    platform.runUntilIdle();
    begin();
    urlSession().answer(500, "oops");
    platform.runUntilIdle();
    begin();
    urlSession().answer(200, "not json");
    platform.runUntilIdle();
    EXPECT_EQ(logMessages(OSLogType::Error).size(), 3U);
    EXPECT_FALSE(ZelvoraSDKInspector::isInitializing());
}

TEST_F(ShopIdLookupTest, AFailedLookupKeepsAnEarlierShopId)
{
    initializeAndFinish({}, "earlier");
    platform.clock().advance(86401);
    beginLookup();
    answer(500, "");
    EXPECT_EQ(shopId(), "earlier");
    beginLookup();
    answer(200, "{}");
    EXPECT_EQ(shopId(), "earlier");
}

TEST_F(ShopIdLookupTest, NothingIsTriedAgainBeforeTheNextInitialize)
{
    beginLookup();
    answer(503, "");
    platform.clock().advance(86400);
    platform.runUntilIdle();
    EXPECT_EQ(urlSession().requests().size(), 1U);
    EXPECT_TRUE(initialize());
    platform.runUntilIdle();
    EXPECT_EQ(urlSession().requests().size(), 2U);
}

TEST_F(ShopIdLookupTest, ALateAnswerIsAwaitedWithoutBlockingTheMainThread)
{
    EXPECT_TRUE(initialize());
    platform.runUntilIdle();
    platform.clock().advance(10'000);
    platform.runUntilIdle();
    EXPECT_TRUE(ZelvoraSDKInspector::isInitializing());
    urlSession().answer(200, R"({"data": {"shopId": "late"}})");
    platform.runUntilIdle();
    EXPECT_EQ(shopId(), "late");
}

TEST_F(ShopIdLookupTest, TheHandlerIsCalledOffTheLoadersQueueAndOffTheMainQueue)
{
    beginLookup();
    urlSession().answer(500, "oops");
    (void)urlSession().loaderQueue().runAll();
    EXPECT_TRUE(errors.empty());
    (void)platform.mainQueue().runAll();
    EXPECT_TRUE(errors.empty());
    (void)platform.globalQueue().runAll();
    EXPECT_EQ(errors.size(), 1U);
}

TEST_F(ShopIdLookupTest, AHandlerMayStartOrInitializeAgain)
{
    std::vector<std::string_view> codes;
    EXPECT_TRUE(sdk().initialize("user", "key", true, false, false, nullptr, nullptr, nullptr,
        [&codes](std::optional<ZelvoraSDKError> const& error) {
            codes.push_back(error->code());
            if (codes.size() == 1)
                sdk().initialize("user", "key", true, false, false);
        }));
    platform.runUntilIdle();
    urlSession().answer(500, "oops");
    platform.runUntilIdle();
    EXPECT_EQ(codes, (std::vector<std::string_view> { "E200", "E004" }))
        << "the sequence is still running at that time";
    EXPECT_FALSE(ZelvoraSDKInspector::isInitializing());
}

// Notes the shop id at each step of a lookup.
class ShopIdLookupOrderTest : public ::testing::Test {
protected:
    ShopIdLookupOrderTest()
    {
        platform.watchStoring([this](std::string const& key) {
            if (key.ends_with("_shop_id"))
                note("stored");
        });
        platform.watchLog([this](std::string const& message) {
            if (message.starts_with("Shop ID"))
                note("logged");
        });
    }

    void begin(std::string apiKey = "key")
    {
        EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", std::move(apiKey), true, false, false, nullptr, nullptr,
            nullptr, [this](std::optional<ZelvoraSDKError> const&) {
                errorLinesWhenTold.push_back(static_cast<std::size_t>(
                    std::ranges::count(platform.memory.log().lines(), OSLogType::Error, &memory::Log::Line::type)));
            }));
        platform.memory.runUntilIdle();
    }
    void note(std::string const& step)
    {
        steps.push_back(step + " with " + ZelvoraSDKInspector::properties().shopId.value_or("none"));
    }

    WatchingPlatform& platform = install<WatchingPlatform>(deniedTracking());
    Texts steps;
    std::vector<std::size_t> errorLinesWhenTold;
};

TEST_F(ShopIdLookupOrderTest, TheAnswersShopIdIsStoredBeforeItIsSetAndSetBeforeItIsLogged)
{
    begin();
    platform.memory.urlSession().answer(200, R"({"data": {"shopId": "shop-7"}})");
    platform.memory.runUntilIdle();
    EXPECT_EQ(steps, (Texts { "stored with none", "logged with shop-7" }));
}

TEST_F(ShopIdLookupOrderTest, AStoredShopIdIsSetBeforeItIsLogged)
{
    ZelvoraStorage::saveShopId("kept");
    steps.clear();
    begin();
    EXPECT_EQ(steps, (Texts { "logged with kept" }));
}

TEST_F(ShopIdLookupOrderTest, FailuresAreLoggedBeforeTheHandlerReceivesThem)
{
    begin("\xff");
    EXPECT_EQ(errorLinesWhenTold, (std::vector<std::size_t> { 1 }));
    begin();
    platform.memory.urlSession().fail(memory::URLSession::timedOut());
    platform.memory.runUntilIdle();
    EXPECT_EQ(errorLinesWhenTold, (std::vector<std::size_t> { 1, 2 }));
    begin();
    platform.memory.urlSession().answer(500, "oops");
    platform.memory.runUntilIdle();
    EXPECT_EQ(errorLinesWhenTold, (std::vector<std::size_t> { 1, 2, 3 }));
    begin();
    platform.memory.urlSession().answer(200, "not json");
    platform.memory.runUntilIdle();
    EXPECT_EQ(errorLinesWhenTold, (std::vector<std::size_t> { 1, 2, 3, 4 }));
}

TEST(ShopIdLookupWriterTest, ABodyThatIsNotUTF8IsLoggedEmptyAndSent)
{
    auto& platform = install<RecordingPlatform>();
    platform.jsonSerialization().setOutput("\xff");
    EXPECT_TRUE(ZelvoraSDK::shared().initialize("user", "key", true, false, false));
    platform.memory.runUntilIdle();
    EXPECT_TRUE(platform.memory.log().holds(OSLogType::Debug, "fetchShopId Request Body: "));
    ASSERT_EQ(platform.memory.urlSession().requests().size(), 1U);
    EXPECT_EQ(platform.memory.urlSession().requests().front().httpBody.bytes, "\xff");
}

}

}
