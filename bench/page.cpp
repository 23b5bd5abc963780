// What the SDK adds to a real engine: the round trip of a page's call and its answer, and the time from the start of
// the process to a page's first message. The reference makes the same calls of the engine without the SDK.

#include "examples/driving/Page.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/Platform.h"
#include "bench/BareBridge.h"
#include "bench/Comparison.h"
#include "examples/driving/ChildProcesses.h"
#include "examples/driving/engineOf.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/LoopbackServer.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
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

[[noreturn]] void stop(std::string const& reason)
{
    std::fprintf(stderr, "%s\n", reason.c_str());
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

void makeTrips(Page& page)
{
    (void)page.evaluate("(run(" + std::to_string(trips) + "), true)");
    if (!page.waitFor("isDone"))
        stop("The page got no answers.");
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

// Runs this program as a freshly installed app, in a new process. Its data stays in the folder.
std::filesystem::path runApp(std::string kind, std::string page, std::filesystem::path const& folder)
{
    static int s_number = 0;
    auto program = "/proc/" + std::to_string(getpid()) + "/exe";
    auto data = (folder / std::to_string(++s_number)).string();
    std::array<char*, 5> arguments { program.data(), kind.data(), data.data(), page.data(), nullptr };
    int status = -1;
    if (!g_spawn_sync(
            nullptr, arguments.data(), nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, nullptr, nullptr, &status, nullptr)
        || status != 0)
        stop("The process for \"" + kind + "\" failed.");
    return data;
}

constexpr char const* readyScript =
    "webkit.messageHandlers.zelvora.postMessage({ action: 'invokeCustomAction', name: 'ready', data: null })";

// Exits after the page's first message, without the teardown, which is not measured.
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
    webkit_web_view_evaluate_javascript(engine, readyScript, -1, nullptr, nullptr, nullptr, nullptr, nullptr);
    bool const wasReceived = gtk::runMainLoopUntil([&isReceived] { return isReceived; });
    std::_Exit(wasReceived ? EXIT_SUCCESS : EXIT_FAILURE);
}

// What an app does between its user's steps.
void rest()
{
    constexpr gint64 pause = gint64 { 2 } * G_USEC_PER_SEC;
    (void)gtk::runMainLoopUntil([end = g_get_monotonic_time() + pause] { return g_get_monotonic_time() > end; });
}

void prewarm()
{
    gtk::prewarm();
    if (!gtk::runMainLoopUntil([] { return !examples::webProcesses().empty(); }))
        stop("There is no web process.");
    rest();
}

// Of this process and its children, the pages that several share in proportion.
double memoryMiB()
{
    auto processes = examples::childProcesses();
    processes.push_back({ .id = getpid(), .parent = getppid(), .name = "this one" });
    double kibibytes = 0;
    for (auto const& process : processes) {
        std::ifstream stream("/proc/" + std::to_string(process.id) + "/smaps_rollup");
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with("Pss:"))
                kibibytes += std::strtod(line.c_str() + line.find(':') + 1, nullptr);
        }
    }
    return kibibytes / 1024;
}

// In an app that shows its first page a while after its start. Leaves what it measured in the folder.
int showFirstPage(bool isPrewarmed, std::filesystem::path const& data, std::string const& page)
{
    rest();
    auto const memory = memoryMiB();
    if (isPrewarmed)
        prewarm();
    auto const memoryAhead = memoryMiB() - memory;
    auto isReceived = false;
    ZelvoraSDK::shared().addCustomAction("ready", [&isReceived](auto const&) { isReceived = true; });
    auto const begin = g_get_monotonic_time();
    ZelvoraWebView const view(platform::CGRect {}, page, false);
    if (!gtk::runMainLoopUntil([&isReceived] { return isReceived; }))
        stop("The page said nothing.");
    auto const seconds = static_cast<double>(g_get_monotonic_time() - begin) / G_USEC_PER_SEC;
    std::ofstream(data / "measured") << seconds << ' ' << memoryAhead;
    std::_Exit(EXIT_SUCCESS);
}

struct FirstPage {
    double seconds = 0;
    double memoryAheadMiB = 0;
};

FirstPage measureFirstPage(std::string const& kind, std::string const& page, std::filesystem::path const& folder)
{
    FirstPage measured;
    std::ifstream(runApp(kind, page, folder) / "measured") >> measured.seconds >> measured.memoryAheadMiB;
    return measured;
}

void measurePrewarming(std::filesystem::path const& folder)
{
    tests::LoopbackServer server;
    auto const page = server
                          .serve("/",
                              [](SoupServerMessage* message) {
                                  tests::answer(message, 200, "<script>ZelvoraSDKBridge.ready()</script>");
                              })
                          .absoluteString();
    double memory = 0;
    bench::Comparison const comparison(7, 1);
    comparison.printTimes(
        "from opening a view made ahead to its page's first message",
        [&] {
            auto const measured = measureFirstPage("ahead", page, folder);
            memory = measured.memoryAheadMiB;
            return measured.seconds;
        },
        "a fresh view", [&] { return measureFirstPage("fresh", page, folder).seconds; });
    bench::printFigure("what a view made ahead takes until it is used", memory, "MiB in all processes");
}

void install(std::filesystem::path const& data)
{
    gtk::install({ .bundleIdentifier = "com.zelvora.bench", .appName = "Bench", .dataDirectory = data });
}

int runAs(std::string const& kind, std::filesystem::path const& data, std::string const& page)
{
    install(data);
    if (kind == "ahead" || kind == "fresh")
        return showFirstPage(kind == "ahead", data, page);
    return receiveFirstMessage(kind == "sdk");
}

}

int main(int count, char** arguments)
{
    gtk_init();
    if (count == 4)
        return runAs(arguments[1], arguments[2], arguments[3]);
    tests::TemporaryDirectory const folder;
    install(folder.path());
    std::fprintf(stderr, "With a real engine\n");
    measureRoundTrips();
    measurePrewarming(folder.path());
    bench::Comparison const comparison(9, 1);
    comparison.print(
        "from process start to the page's first message", [&] { (void)runApp("sdk", "", folder.path()); },
        "a bare web view", [&] { (void)runApp("bare", "", folder.path()); });
    return EXIT_SUCCESS;
}
