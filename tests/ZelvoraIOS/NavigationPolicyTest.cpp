#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

namespace zelvora::tests {

namespace {

using Policy = platform::WKNavigationActionPolicy;

class NavigationPolicyTest : public ContainerTest {
protected:
    NavigationPolicyTest() : view(std::make_shared<ZelvoraWebView>(CGRect {}, entryUrl, false))
    {
        platform.runUntilIdle();
    }

    // The view's decision. The handler stops the process unless it is called exactly once.
    [[nodiscard]] std::optional<Policy> decision(std::optional<platform::URL> target) const
    {
        std::optional<Policy> decided;
        engine(*view).navigationDelegate()->decidePolicyFor(
            { std::move(target) }, [&decided](Policy policy) { decided = policy; });
        return decided;
    }
    [[nodiscard]] std::optional<Policy> decision(std::string const& target) const { return decision(url(target)); }

    [[nodiscard]] memory::UIApplication& application() const { return platform.application(); }

    std::shared_ptr<ZelvoraWebView> view;
};

class AllowedNavigationTest
    : public NavigationPolicyTest
    , public ::testing::WithParamInterface<char const*> { };

TEST_P(AllowedNavigationTest, AWebSchemeIsAllowedWithoutAskingTheSystem)
{
    EXPECT_EQ(decision(GetParam()), Policy::Allow);
    EXPECT_TRUE(application().askedURLs().empty());
    EXPECT_TRUE(application().openedURLs().empty());
    EXPECT_TRUE(logMessages().empty());
}

INSTANTIATE_TEST_SUITE_P(Urls, AllowedNavigationTest,
    ::testing::Values("http://shop.example/", "https://shop.example/a?b#c", "about:blank", "about:srcdoc",
        "HTTPS://shop.example/", "hTtP://shop.example/", "ABOUT:blank", "https:", "http:relative"));

class ExternalNavigationTest
    : public NavigationPolicyTest
    , public ::testing::WithParamInterface<char const*> { };

TEST_P(ExternalNavigationTest, AnotherSchemeThatNoAppCanOpenIsCancelledWithAnErrorLine)
{
    EXPECT_EQ(decision(GetParam()), Policy::Cancel);
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Error, std::string("Cannot open external scheme: ") + GetParam() } }));
    EXPECT_EQ(application().askedURLs(), std::vector { url(GetParam()) });
    EXPECT_TRUE(application().openedURLs().empty());
}

TEST_P(ExternalNavigationTest, AnotherSchemeThatTheSystemCanOpenIsCancelledAndOpenedSilently)
{
    auto scheme = url(GetParam()).scheme().value_or("");
    std::ranges::transform(scheme, scheme.begin(), [](unsigned char c) { return std::tolower(c); });
    application().setOpenableSchemes({ scheme });
    EXPECT_EQ(decision(GetParam()), Policy::Cancel);
    EXPECT_EQ(application().openedURLs(), std::vector { url(GetParam()) });
    EXPECT_EQ(application().askedURLs(), std::vector { url(GetParam()) });
    EXPECT_TRUE(logMessages().empty());
}

INSTANTIATE_TEST_SUITE_P(Urls, ExternalNavigationTest,
    ::testing::Values("tel:+82-2-123-4567", "mailto:kim@shop.example?subject=a", "sms:1", "zelvorapay://pay?order=1#x",
        "market://details?id=a", "intent://scan/#Intent;scheme=pay;end", "data:text/html,%3Cp%3E", "blob:https://a/b",
        "javascript:alert(1)", "file:///etc/hosts", "ftp://shop.example/", "httpsx://a/", "htt://a/", "http+x://a/",
        "aboutx:blank", "TEL:1", "x:"));

class SchemelessNavigationTest
    : public NavigationPolicyTest
    , public ::testing::WithParamInterface<char const*> { };

TEST_P(SchemelessNavigationTest, AUrlWithoutASchemeIsCancelledLikeAnyOther)
{
    ASSERT_FALSE(url(GetParam()).scheme());
    EXPECT_EQ(decision(GetParam()), Policy::Cancel);
    EXPECT_EQ(logMessages(),
        (std::vector<LogMessage> { { OSLogType::Error, std::string("Cannot open external scheme: ") + GetParam() } }));
}

INSTANTIATE_TEST_SUITE_P(Urls, SchemelessNavigationTest,
    ::testing::Values("/relative", "//shop.example/", "page.html", "?query", "#fragment", "https"));

TEST_F(NavigationPolicyTest, ThePolicysValuesAreThePhones)
{
    EXPECT_EQ(static_cast<int>(Policy::Cancel), 0);
    EXPECT_EQ(static_cast<int>(Policy::Allow), 1);
}

TEST_F(NavigationPolicyTest, AnActionWithoutAUrlIsAllowed)
{
    EXPECT_EQ(decision(std::nullopt), Policy::Allow);
    EXPECT_TRUE(application().askedURLs().empty());
    EXPECT_TRUE(logMessages().empty());
}

TEST_F(NavigationPolicyTest, TheSystemIsAskedAndGivenTheUrlBeforeTheAnswer)
{
    application().setOpenableSchemes({ "tel" });
    std::size_t openedBefore = 0;
    engine(*view).navigationDelegate()->decidePolicyFor(
        { url("tel:1") }, [&](Policy) { openedBefore = application().openedURLs().size(); });
    EXPECT_EQ(openedBefore, 1U);
}

TEST_F(NavigationPolicyTest, TheErrorLineIsWrittenBeforeTheAnswer)
{
    std::size_t linesBefore = 0;
    engine(*view).navigationDelegate()->decidePolicyFor(
        { url("tel:1") }, [&](Policy) { linesBefore = logMessages().size(); });
    EXPECT_EQ(linesBefore, 1U);
}

TEST_F(NavigationPolicyTest, TheErrorLineHasTheWholeEncodedUrl)
{
    EXPECT_EQ(decision("zelvorapay://pay?name=\xED\x95\x9C a"), Policy::Cancel);
    EXPECT_EQ(logMessages(OSLogType::Error),
        (std::vector<std::string> { "Cannot open external scheme: zelvorapay://pay?name=%ED%95%9C%20a" }));
}

TEST_F(NavigationPolicyTest, ACancelledLinkLeavesThePageUnchanged)
{
    application().setOpenableSchemes({ "tel" });
    engine(*view).navigate(url("tel:1"));
    engine(*view).navigate(url("unknown:1"));
    EXPECT_EQ(view->currentUrl(), entryUrl);
    EXPECT_FALSE(view->canGoBack());
}

TEST_F(NavigationPolicyTest, AnAllowedLinkIsFollowed)
{
    engine(*view).navigate(url("HTTPS://shop.example/next"));
    EXPECT_EQ(view->currentUrl(), "HTTPS://shop.example/next");
    EXPECT_TRUE(view->canGoBack());
}

TEST_F(NavigationPolicyTest, AFramesNavigationFollowsTheSamePolicy)
{
    engine(*view).navigateFrame(url("data:text/html,x"));
    engine(*view).navigateFrame(url("zelvorapay://pay"));
    engine(*view).navigateFrame(url("https://other.example/frame"));
    engine(*view).navigateFrame(std::nullopt);

    auto const& decisions = engine(*view).decisions();
    ASSERT_GE(decisions.size(), 4U);
    auto const policy = [&](std::size_t fromEnd) { return decisions[decisions.size() - fromEnd].policy; };
    EXPECT_EQ(policy(4), Policy::Cancel);
    EXPECT_EQ(policy(3), Policy::Cancel);
    EXPECT_EQ(policy(2), Policy::Allow);
    EXPECT_EQ(policy(1), Policy::Allow);
    EXPECT_EQ(logMessages(OSLogType::Error),
        (std::vector<std::string> {
            "Cannot open external scheme: data:text/html,x", "Cannot open external scheme: zelvorapay://pay" }));
}

TEST_F(NavigationPolicyTest, TheEntryAddressIsJudgedToo)
{
    auto const other = std::make_shared<ZelvoraWebView>(CGRect {}, "tel:1", false);
    platform.runUntilIdle();
    EXPECT_EQ(engine(*other).loadedRequests().size(), 1U);
    EXPECT_FALSE(other->currentUrl());
    EXPECT_EQ(logMessages(OSLogType::Error), (std::vector<std::string> { "Cannot open external scheme: tel:1" }));
}

TEST_F(NavigationPolicyTest, TheStartOfANavigationIsNoOccasionForAnything)
{
    auto const calls = engine(*view).calls();
    engine(*view).navigationDelegate()->didStartProvisionalNavigation();
    EXPECT_EQ(engine(*view).calls(), calls);
    EXPECT_TRUE(logMessages().empty());
    EXPECT_TRUE(platform.mainQueue().isEmpty());
}

TEST_F(NavigationPolicyTest, TheAnswerMayDropTheView)
{
    auto const webView = platform.webViews().back();
    webView->navigationDelegate()->decidePolicyFor({ url("tel:1") }, [this](Policy) { view.reset(); });
    EXPECT_FALSE(view);
    EXPECT_FALSE(webView->navigationDelegate());
}

}

}
