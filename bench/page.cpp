// What the SDK adds to a real engine: the round trip of a page's call and its answer, and the time from the start of
// the process to a page's first message. The reference makes the same calls of the engine without the SDK.

#include "examples/driving/Page.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "bench/BareBridge.h"
#include "bench/Comparison.h"
#include "bench/runAgain.h"
#include "examples/driving/engineOf.h"
#include "tests/support/TemporaryDirectory.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace {

using namespace zelvora;
using examples::engineOf;
using examples::Page;

constexpr int trips = 100;

// Sequential calls: each waits for the answer to the previous one.
constexpr char const* tripScript = R"((window.run = (count) => {
    window.isDone = false;
    let left = count;
    const ask = () => webkit.messageHandlers.zelvora.postMessage({ action: 'getItem', key: 'key', callback: 'receive' });
    window.receive = () => { if (--left > 0) ask(); else window.isDone = true; };
    ask();
}, true))";

void makeTrips(Page& page)
{
    (void)page.evaluate("(run(" + std::to_string(trips) + "), true)");
    if (page.waitFor("isDone"))
        return;
    std::fprintf(stderr, "The page got no answers.\n");
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

std::shared_ptr<ZelvoraWebView> makeSDKView()
{
    return std::make_shared<ZelvoraWebView>(platform::CGRect {}, "about:blank", false);
}

void measureRoundTrips()
{
    auto const view = makeSDKView();
    bench::BareBridge const bare;
    Page sdkPage(engineOf(*view));
    Page barePage(bare.webView());
    for (auto* page : { &sdkPage, &barePage })
        (void)page->evaluate(tripScript);
    bench::Comparison const comparison(31, 1);
    comparison.print(
        "round trips from the page and back", [&] { makeTrips(sdkPage); }, "the engine's calls without the SDK",
        [&] { makeTrips(barePage); });
}

// Runs this program as a freshly installed app, in a new process that exits after the page's first message. Its data
// stays in the folder.
void start(std::string const& kind, std::filesystem::path const& folder)
{
    static int s_number = 0;
    bench::runAgain({ kind, (folder / std::to_string(++s_number)).string() });
}

int receiveFirstMessage(bool withSDK)
{
    auto isReceived = false;
    std::unique_ptr<bench::BareBridge> bare;
    std::shared_ptr<ZelvoraWebView> view;
    if (withSDK) {
        ZelvoraSDK::shared().addCustomAction("ready", [&isReceived](auto const&) { isReceived = true; });
        view = makeSDKView();
    } else {
        bare = std::make_unique<bench::BareBridge>([&isReceived] { isReceived = true; });
    }
    auto* const engine = withSDK ? engineOf(*view) : bare->webView();
    auto const* const script =
        "webkit.messageHandlers.zelvora.postMessage({ action: 'invokeCustomAction', name: 'ready', data: null })";
    webkit_web_view_evaluate_javascript(engine, script, -1, nullptr, nullptr, nullptr, nullptr, nullptr);
    bool const wasReceived = gtk::runMainLoopUntil([&isReceived] { return isReceived; });
    // Exits without the teardown, which is not measured.
    std::_Exit(wasReceived ? EXIT_SUCCESS : EXIT_FAILURE);
}

void install(std::filesystem::path const& data)
{
    gtk::install({ .bundleIdentifier = "com.zelvora.bench", .appName = "Bench", .dataDirectory = data });
}

}

int main(int count, char** arguments)
{
    gtk_init();
    if (count == 3) {
        install(arguments[2]);
        return receiveFirstMessage(std::string(arguments[1]) == "sdk");
    }
    tests::TemporaryDirectory const folder;
    install(folder.path());
    std::fprintf(stderr, "With a real engine\n");
    measureRoundTrips();
    bench::Comparison const comparison(9, 1);
    comparison.print(
        "from process start to the page's first message", [&] { start("sdk", folder.path()); }, "a bare web view",
        [&] { start("bare", folder.path()); });
    return EXIT_SUCCESS;
}
