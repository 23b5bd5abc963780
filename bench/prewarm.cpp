// What a web view that was made ahead is worth: the time to the first page's first message in an app that shows it a
// while after its start, and the memory until then. Each measurement is of a new process, as the engine keeps the
// process of a site that was shown.

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/GLib/portOf.h"
#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "bench/Comparison.h"
#include "bench/runAgain.h"
#include "examples/driving/ChildProcesses.h"
#include "tests/support/TemporaryDirectory.h"

#include <libsoup/soup.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

using namespace zelvora;

[[noreturn]] void stop(char const* reason)
{
    std::fprintf(stderr, "%s\n", reason);
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

/// Serves the page that the app shows, whose first act is a message.
class PageServer final {
public:
    PageServer()
    {
        auto const answer = +[](SoupServer*, SoupServerMessage* message, char const*, GHashTable*, gpointer) {
            static constexpr std::string_view page = "<script>ZelvoraSDKBridge.ready()</script>";
            soup_server_message_set_status(message, SOUP_STATUS_OK, nullptr);
            soup_server_message_set_response(message, "text/html", SOUP_MEMORY_STATIC, page.data(), page.size());
        };
        soup_server_add_handler(m_server.get(), "/", answer, nullptr, nullptr);
        if (!soup_server_listen_local(m_server.get(), 0, SOUP_SERVER_LISTEN_IPV4_ONLY, nullptr))
            stop("The page's server did not start.");
    }

    [[nodiscard]] std::string address() const
    {
        return "http://127.0.0.1:" + std::to_string(gtk::portOf(m_server.get())) + "/";
    }

private:
    gtk::GObjectPointer<SoupServer> m_server = gtk::adopt(soup_server_new(nullptr, nullptr));
};

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

struct FirstPage {
    double seconds = 0;
    double memoryAheadMiB = 0;
};

constexpr char const* resultFile = "measured";

// The app. Leaves what it measured in the folder, and exits without the teardown.
[[noreturn]] void showFirstPage(bool isAhead, std::filesystem::path const& data)
{
    gtk::install({ .bundleIdentifier = "com.zelvora.bench", .appName = "Bench", .dataDirectory = data });
    PageServer const server;
    rest();
    auto const memory = memoryMiB();
    if (isAhead)
        prewarm();
    auto const memoryAhead = memoryMiB() - memory;
    auto isReceived = false;
    ZelvoraSDK::shared().addCustomAction("ready", [&isReceived](auto const&) { isReceived = true; });
    auto const begin = g_get_monotonic_time();
    ZelvoraWebView const view(platform::CGRect {}, server.address(), false);
    if (!gtk::runMainLoopUntil([&isReceived] { return isReceived; }))
        stop("The page said nothing.");
    auto const seconds = static_cast<double>(g_get_monotonic_time() - begin) / G_USEC_PER_SEC;
    std::ofstream(data / resultFile) << seconds << ' ' << memoryAhead;
    std::_Exit(EXIT_SUCCESS);
}

FirstPage measureFirstPage(std::string const& kind, std::filesystem::path const& folder)
{
    static int s_number = 0;
    auto const data = folder / std::to_string(++s_number);
    bench::runAgain({ kind, data.string() });
    FirstPage measured;
    std::ifstream(data / resultFile) >> measured.seconds >> measured.memoryAheadMiB;
    return measured;
}

}

int main(int count, char** arguments)
{
    gtk_init();
    if (count == 3)
        showFirstPage(std::string_view(arguments[1]) == "ahead", arguments[2]);
    tests::TemporaryDirectory const folder;
    std::fprintf(stderr, "A web view that was made ahead\n");
    double memory = 0;
    auto const secondsAhead = [&] {
        auto const measured = measureFirstPage("ahead", folder.path());
        memory = measured.memoryAheadMiB;
        return measured.seconds;
    };
    bench::Comparison const comparison(7, 1);
    comparison.printTimes("from opening a view made ahead to its page's first message", secondsAhead, "a fresh view",
        [&] { return measureFirstPage("fresh", folder.path()).seconds; });
    bench::printFigure("what a view made ahead takes until it is used", memory, "MiB in all processes");
    return EXIT_SUCCESS;
}
