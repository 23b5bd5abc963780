#pragma once

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Platform.h"
#include "tests/support/gtk/GtkHarness.h"

#include <gtest/gtest.h>
#include <webkit/webkit.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::tests {

/// A web view on a screen, whose pages post to the handler "zelvora".
class PageTest : public testing::Test {
protected:
    using Value = platform::Value;

    class Handler final : public platform::WKScriptMessageHandler {
    public:
        void didReceiveScriptMessage(platform::WKScriptMessage const& message) override
        {
            bodies.push_back(message.body);
        }

        std::vector<Value> bodies;
    };

    explicit PageTest(GtkHarness::Configure const& configure = [](gtk::HostOptions&) { }) : m_harness(configure)
    {
        m_content = platform::Platform::current().makeUserContentController();
        m_content->addScriptMessageHandler(m_handler, "zelvora");
    }
    ~PageTest() override { m_content->removeScriptMessageHandler("zelvora"); }

    void addScript(std::string source,
        platform::WKUserScriptInjectionTime time = platform::WKUserScriptInjectionTime::AtDocumentStart,
        bool forMainFrameOnly = false)
    {
        m_content->addUserScript({ std::move(source), time, forMainFrameOnly });
    }

    /// Call after adding the scripts.
    platform::WKWebView& view()
    {
        if (!m_view) {
            m_view = platform::Platform::current().makeWebView({}, { m_content });
            m_harness.show(m_view);
        }
        return *m_view;
    }

    void load(platform::URL const& url) { view().load({ url }); }

    void loadAndWait(std::string const& html)
    {
        auto const url = m_harness.page("page", html);
        load(url);
        ASSERT_TRUE(m_harness.runUntil(
            [&] { return m_view->url() == url && !webkit_web_view_is_loading(gtk::webKitWebViewOf(*m_view)); }));
    }

    void post(std::string const& expression)
    {
        view().evaluateJavaScript("window.webkit.messageHandlers.zelvora.postMessage(" + expression + ")");
    }

    /// Waits for the next message from the page.
    Value next()
    {
        EXPECT_TRUE(m_harness.runUntil([this] { return m_handler.bodies.size() > m_taken; }));
        return m_taken < m_handler.bodies.size() ? m_handler.bodies[m_taken++] : Value("nothing came");
    }

    GtkHarness m_harness;
    Handler m_handler;
    std::shared_ptr<platform::WKUserContentController> m_content;
    std::shared_ptr<platform::WKWebView> m_view;

private:
    std::size_t m_taken = 0;
};

}
