#include "tests/uikit/live/LiveHarness.h"

#include "ZelvoraAdapters/uikit/Host.h"
#include "tests/support/pageActions.h"
#include "tests/uikit/doubles/Dispatch.h"
#include "tests/uikit/live/Engine.h"
#include "tests/uikit/live/Objects.h"
#include "tests/uikit/live/WebKit.h"

#include <utility>

namespace zelvora::tests {

class LiveHarness::MarkHandler final : public platform::WKScriptMessageHandler {
public:
    explicit MarkHandler(std::vector<std::string>& marks) : m_marks(marks) { }

    void didReceiveScriptMessage(platform::WKScriptMessage const& message) override
    {
        m_marks.push_back(message.body.text() ? *message.body.text() : "not a text");
    }

private:
    std::vector<std::string>& m_marks;
};

LiveHarness::LiveHarness()
{
    uikit::install();
    m_window = [[UIWindow alloc] initWithFrame:CGRectMake(0, 0, 390, 844)];
}

LiveHarness::~LiveHarness()
{
    if (m_markedContent)
        m_markedContent->removeScriptMessageHandler("mark");
    m_window.rootViewController = nil;
}

bool LiveHarness::runUntil(std::function<bool()> const& done)
{
    return doubles::runMainUntil([this, &done] {
        while (live::iterate()) { }
        m_pool.drain();
        return done();
    });
}

void LiveHarness::show(std::shared_ptr<platform::WKWebView> view)
{
    m_markHandler = std::make_unique<MarkHandler>(m_marks);
    m_markedContent = view->configuration().userContentController;
    m_markedContent->addScriptMessageHandler(*m_markHandler, "mark");
    m_markedContent->addUserScript({ "function mark(text) { webkit.messageHandlers.mark.postMessage(text); }" });
    auto const controller = std::make_shared<platform::UIViewController>();
    controller->view().addSubview(std::move(view));
    @autoreleasepool {
        m_window.rootViewController = uikit::nativeOf(*controller);
        [m_window makeKeyAndVisible];
    }
}

platform::URL LiveHarness::page(std::string const& name)
{
    return page(name, "<title>" + name + "</title>");
}

platform::URL LiveHarness::page(std::string const& name, std::string const& html)
{
    return *platform::URL::parse(m_server.serve('/' + name, "<!doctype html><meta charset=utf-8><body>" + html));
}

bool LiveHarness::waitForPage(platform::WKWebView& view)
{
    return runUntil([&view] {
        auto const url = view.url();
        NSString* ready = live::stringOf((url ? url->absoluteString() : "") + " complete");
        auto* const native = static_cast<::WKWebView*>(uikit::nativeOf(view));
        return [live::evaluate(native, @"location.href + ' ' + document.readyState") isEqual:ready] == YES;
    });
}

void LiveHarness::navigate(platform::WKWebView& view, platform::URL const& url)
{
    view.evaluateJavaScript(clickOnLinkTo(url));
}

void LiveHarness::navigateFrame(platform::WKWebView& view, platform::URL const& url)
{
    view.evaluateJavaScript(additionOfFrame(url));
}

void LiveHarness::post(
    platform::WKWebView& view, std::string const& handler, std::string const& expression, platform::Value const&)
{
    view.evaluateJavaScript(postOf(expression, handler));
}

}
