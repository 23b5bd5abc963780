#pragma once

#include "ZelvoraContract/support/ReceivedRequest.h"
#include "ZelvoraContract/support/Record.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::platform {

inline void PrintTo(Value const& value, std::ostream* stream)
{
    *stream << debugDescription(value);
}

}

namespace zelvora::tests {

/// What every adapter's web view promises. A harness loads pages or acts as one:
///
///     // Puts the view on the screen.
///     void show(std::shared_ptr<platform::WKWebView> view);
///     // The URL of a page that can be loaded, a different one for each name.
///     platform::URL page(std::string const& name);
///     // Waits until the page in the view can post messages.
///     bool waitForPage(platform::WKWebView& view);
///     // Navigates the page, or a frame in it.
///     void navigate(platform::WKWebView& view, platform::URL const& url);
///     void navigateFrame(platform::WKWebView& view, platform::URL const& url);
///     // Has the page post the value of the expression, which is equal to `value`.
///     void post(platform::WKWebView& view, std::string const& handler, std::string const& expression,
///         platform::Value const& value);
///     // The arguments of the calls mark('...') that user scripts and `evaluateJavaScript` have run in the pages, in
///     // order. A page has that function before the user scripts run that are added after `show`.
///     std::vector<std::string> marks();
///     // The requests for pages.
///     std::vector<ReceivedRequest> received();
///     // Runs the adapter until `done` returns true; false after half a minute.
///     bool runUntil(std::function<bool()> const& done);
template<typename Harness>
class WebViewContract : public testing::Test {
protected:
    using Value = platform::Value;

    class Handler final : public platform::WKScriptMessageHandler {
    public:
        void didReceiveScriptMessage(platform::WKScriptMessage const& message) override { messages.push_back(message); }

        std::vector<platform::WKScriptMessage> messages;
    };

    class Delegate final : public platform::WKNavigationDelegate {
    public:
        void decidePolicyFor(platform::WKNavigationAction const& action, DecisionHandler decisionHandler) override
        {
            auto const text = action.url ? action.url->absoluteString() : "none";
            asked.push_back(text);
            bool const isRefused = std::ranges::find(refused, text) != refused.end();
            decisionHandler(
                isRefused ? platform::WKNavigationActionPolicy::Cancel : platform::WKNavigationActionPolicy::Allow);
        }
        void didStartProvisionalNavigation() override { ++starts; }

        [[nodiscard]] bool wasAskedAbout(platform::URL const& url) const
        {
            return std::ranges::find(asked, url.absoluteString()) != asked.end();
        }

        std::vector<std::string> asked;
        std::vector<std::string> refused;
        int starts = 0;
    };

    void SetUp() override
    {
        m_content->addScriptMessageHandler(m_handler, "zelvora");
        m_view = platform::Platform::current().makeWebView({}, { m_content });
        m_view->setNavigationDelegate(&m_delegate);
        m_observation = m_view->observeURL([this](platform::WKWebView& view) {
            m_urls.push_back(view.url() ? view.url()->absoluteString() : "none");
        });
        m_harness.show(m_view);
    }

    void TearDown() override
    {
        m_view->setNavigationDelegate(nullptr);
        m_content->removeScriptMessageHandler("zelvora");
    }

    bool load(std::string const& name, std::map<std::string, std::string> fields = {})
    {
        auto const url = m_harness.page(name);
        m_view->load({ .url = url, .httpHeaderFields = std::move(fields) });
        return m_harness.runUntil([&] { return m_delegate.wasAskedAbout(url) && currentURL() == url.absoluteString(); })
            && m_harness.waitForPage(*m_view);
    }

    std::string currentURL() { return m_view->url() ? m_view->url()->absoluteString() : "none"; }

    Harness m_harness;
    Handler m_handler;
    Delegate m_delegate;
    std::shared_ptr<platform::WKUserContentController> m_content =
        platform::Platform::current().makeUserContentController();
    std::shared_ptr<platform::WKWebView> m_view;
    std::unique_ptr<platform::NSKeyValueObservation> m_observation;
    std::vector<std::string> m_urls;
};

TYPED_TEST_SUITE_P(WebViewContract);

TYPED_TEST_P(WebViewContract, DeliversMessagesInOrderWithTheirTypesKept)
{
    using platform::Array;
    using platform::Date;
    using platform::Dictionary;
    using platform::Null;
    using platform::Value;
    ASSERT_TRUE(this->load("first"));
    std::vector<std::pair<std::string, Value>> const posted {
        { "true", true },
        { "false", false },
        { "1", 1 },
        { "0", 0 },
        { "-2.5e300", -2.5e300 },
        { "Infinity", std::numeric_limits<double>::infinity() },
        { "null", Null {} },
        { "''", "" },
        { "'true'", "true" },
        { "'가나 \\u{1f600} \"quoted\" \\\\ \\n'", "가나 😀 \"quoted\" \\ \n" },
        { "new Date(1500)", Date { 1.5 } },
        { "[]", Array {} },
        { "({})", Dictionary {} },
        { "[1, true, 'x', null, undefined, [2]]", Array { 1, true, "x", Null {}, Null {}, Array { 2 } } },
        { "({ gone: undefined, kept: null, '키': { deep: [false] } })",
            Dictionary { { "kept", Null {} }, { "키", Dictionary { { "deep", Array { false } } } } } },
    };
    for (auto const& [expression, value] : posted)
        this->m_harness.post(*this->m_view, "zelvora", expression, value);
    auto const& messages = this->m_handler.messages;
    EXPECT_TRUE(this->m_harness.runUntil([&] { return messages.size() >= posted.size(); }));
    ASSERT_EQ(messages.size(), posted.size());
    for (std::size_t index = 0; index < posted.size(); ++index) {
        EXPECT_EQ(messages[index].name, "zelvora");
        EXPECT_EQ(messages[index].body, posted[index].second) << posted[index].first;
    }
}

TYPED_TEST_P(WebViewContract, ARemovedHandlerIsNotCalled)
{
    ASSERT_TRUE(this->load("first"));
    auto& harness = this->m_harness;
    typename TestFixture::Handler other;
    this->m_content->addScriptMessageHandler(other, "other");
    harness.post(*this->m_view, "other", "1", 1);
    EXPECT_TRUE(harness.runUntil([&] { return other.messages.size() == 1; }));
    this->m_content->removeScriptMessageHandler("other");
    harness.post(*this->m_view, "other", "2", 2);
    harness.post(*this->m_view, "zelvora", "3", 3);
    EXPECT_TRUE(harness.runUntil([&] { return this->m_handler.messages.size() == 1; }));
    EXPECT_EQ(other.messages.size(), 1U);
}

TYPED_TEST_P(WebViewContract, AsksAboutEveryNavigationAndObeysTheAnswer)
{
    auto& harness = this->m_harness;
    auto& delegate = this->m_delegate;
    ASSERT_TRUE(this->load("first"));
    auto const first = this->currentURL();

    auto const refused = *platform::URL::parse("zelvora-test:elsewhere");
    delegate.refused = { refused.absoluteString() };
    harness.navigate(*this->m_view, refused);
    EXPECT_TRUE(harness.runUntil([&] { return delegate.wasAskedAbout(refused); }));
    EXPECT_EQ(this->currentURL(), first);

    auto const framed = harness.page("framed");
    harness.navigateFrame(*this->m_view, framed);
    EXPECT_TRUE(harness.runUntil([&] { return delegate.wasAskedAbout(framed); }));
    EXPECT_EQ(this->currentURL(), first);

    auto const second = harness.page("second");
    harness.navigate(*this->m_view, second);
    EXPECT_TRUE(harness.runUntil([&] { return this->currentURL() == second.absoluteString(); }));
    EXPECT_EQ(std::ranges::count(delegate.asked, second.absoluteString()), 1);
}

TYPED_TEST_P(WebViewContract, TellsThatAnotherPageBeginsToLoad)
{
    auto& harness = this->m_harness;
    auto& delegate = this->m_delegate;
    ASSERT_TRUE(this->load("first"));
    EXPECT_EQ(delegate.starts, 1);

    auto const refused = *platform::URL::parse("zelvora-test:elsewhere");
    delegate.refused = { refused.absoluteString() };
    harness.navigate(*this->m_view, refused);
    EXPECT_TRUE(harness.runUntil([&] { return delegate.wasAskedAbout(refused); }));

    auto const second = harness.page("second");
    harness.navigate(*this->m_view, second);
    EXPECT_TRUE(harness.runUntil([&] { return this->currentURL() == second.absoluteString(); }));
    EXPECT_EQ(delegate.starts, 2) << "a navigation that is refused starts none";
}

TYPED_TEST_P(WebViewContract, LoadsWithTheHeaderFieldsOfTheRequest)
{
    ASSERT_TRUE(this->load("first", { { "X-Zelvora-Shop", "seven of 7" }, { "X-Zelvora-Other", "yes" } }));
    auto const carriesThem = [](ReceivedRequest const& request) {
        auto const& fields = request.headers;
        auto const shop = fields.find("x-zelvora-shop");
        auto const other = fields.find("x-zelvora-other");
        return shop != fields.end() && shop->second == "seven of 7" && other != fields.end() && other->second == "yes";
    };
    EXPECT_EQ(std::ranges::count_if(this->m_harness.received(), carriesThem), 1);
}

TYPED_TEST_P(WebViewContract, RunsUserScriptsAtTheirTimesInTheOrderOfTheCalls)
{
    using Time = platform::WKUserScriptInjectionTime;
    this->m_content->addUserScript({ .source = "mark('third')", .injectionTime = Time::AtDocumentEnd });
    this->m_content->addUserScript({ .source = "mark('first')" });
    this->m_content->addUserScript({ .source = "mark('second')" });
    this->m_content->addUserScript({ .source = "mark('fourth')", .injectionTime = Time::AtDocumentEnd });
    ASSERT_TRUE(this->load("scripted"));
    EXPECT_TRUE(this->m_harness.runUntil([&] { return this->m_harness.marks().size() >= 4; }));
    EXPECT_EQ(this->m_harness.marks(), (std::vector<std::string> { "first", "second", "third", "fourth" }));
}

TYPED_TEST_P(WebViewContract, ReportsEachURLChangeOnceAndGoesBack)
{
    auto& harness = this->m_harness;
    ASSERT_TRUE(this->load("first"));
    auto const first = this->currentURL();
    EXPECT_FALSE(this->m_view->canGoBack());
    auto const second = harness.page("second");
    harness.navigate(*this->m_view, second);
    EXPECT_TRUE(
        harness.runUntil([&] { return this->m_view->canGoBack() && this->currentURL() == second.absoluteString(); }));
    this->m_view->goBack();
    EXPECT_TRUE(harness.runUntil([&] { return this->currentURL() == first && !this->m_view->canGoBack(); }));
    EXPECT_EQ(this->m_urls, (std::vector { first, second.absoluteString(), first }));

    this->m_observation->invalidate();
    harness.navigate(*this->m_view, second);
    EXPECT_TRUE(harness.runUntil([&] { return this->currentURL() == second.absoluteString(); }));
    EXPECT_EQ(this->m_urls.size(), 3U);
}

TYPED_TEST_P(WebViewContract, EvaluatesScriptsInTheOrderOfTheCalls)
{
    ASSERT_TRUE(this->load("first"));
    std::vector<std::string> expected;
    for (int number = 0; number < 50; ++number) {
        auto const mark = std::to_string(number);
        this->m_view->evaluateJavaScript("mark('" + mark + "')");
        expected.push_back(mark);
    }
    EXPECT_TRUE(this->m_harness.runUntil([&] { return this->m_harness.marks().size() >= expected.size(); }));
    EXPECT_EQ(this->m_harness.marks(), expected);
}

TYPED_TEST_P(WebViewContract, AnObservationMayOutliveTheView)
{
    ASSERT_TRUE(this->load("first"));
    std::weak_ptr<platform::WKWebView> const watched = this->m_view;
    auto const replaced = platform::Platform::current().makeWebView({}, { this->m_content });
    this->m_view->setNavigationDelegate(nullptr);
    this->m_view->removeFromSuperview();
    this->m_view = replaced;
    EXPECT_TRUE(this->m_harness.runUntil([&] { return watched.expired(); }));
    this->m_observation->invalidate();
}

REGISTER_TYPED_TEST_SUITE_P(WebViewContract, DeliversMessagesInOrderWithTheirTypesKept, ARemovedHandlerIsNotCalled,
    AsksAboutEveryNavigationAndObeysTheAnswer, TellsThatAnotherPageBeginsToLoad, LoadsWithTheHeaderFieldsOfTheRequest,
    RunsUserScriptsAtTheirTimesInTheOrderOfTheCalls, ReportsEachURLChangeOnceAndGoesBack,
    EvaluatesScriptsInTheOrderOfTheCalls, AnObservationMayOutliveTheView);

}
