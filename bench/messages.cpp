// What a page's message costs the host's main thread until the SDK's handler has it as a value. The reference is a
// handler of the same web view that the engine calls without the SDK and that does nothing, or reads a text.

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"
#include "ZelvoraPlatform/WebKit/WKUserContentController.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"
#include "bench/Comparison.h"
#include "examples/driving/Page.h"
#include "tests/support/TemporaryDirectory.h"

#include <webkit/webkit.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

namespace {

using namespace zelvora;

// Of this thread alone, as the page posts meanwhile.
double processorSeconds()
{
    timespec now {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + (static_cast<double>(now.tv_nsec) / 1e9);
}

/// A page with a handler of the SDK's platform layer and others of the engine's. All are of one view, because one
/// engine process is slower than another.
class Receiver final : private platform::WKScriptMessageHandler {
public:
    Receiver()
    {
        m_content->addScriptMessageHandler(*this, "converted");
        m_view->load({ *platform::URL::parse("about:blank") });
        connect("bare", [](WebKitUserContentManager*, JSCValue*, int* received) { ++*received; });
        connect("reading", [](WebKitUserContentManager*, JSCValue* body, int* received) {
            auto const text = gtk::adopt(jsc_value_object_get_property(body, "data"));
            gtk::GBytesPointer const bytes(jsc_value_to_string_as_bytes(text.get()));
            ++*received;
        });
    }
    Receiver(Receiver const&) = delete;
    Receiver& operator=(Receiver const&) = delete;
    ~Receiver() override { m_content->removeScriptMessageHandler("converted"); }

    double secondsOf(std::string const& handler, std::string const& body, int count)
    {
        m_received = 0;
        (void)m_page.evaluate("(window.body = " + body + ", true)");
        auto const begin = processorSeconds();
        (void)m_page.evaluate("(() => { for (let i = 0; i < " + std::to_string(count) + "; ++i) webkit.messageHandlers."
            + handler + ".postMessage(body); return true; })()");
        if (!gtk::runMainLoopUntil([&] { return m_received == count; })) {
            std::fprintf(stderr, "A message did not arrive.\n");
            std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
        }
        return processorSeconds() - begin;
    }

private:
    using Handler = void (*)(WebKitUserContentManager*, JSCValue*, int*);

    // platform::WKScriptMessageHandler
    void didReceiveScriptMessage(platform::WKScriptMessage const&) override { ++m_received; }

    // Until the view and its engine end with the program.
    void connect(char const* name, Handler handler)
    {
        auto* const manager = webkit_web_view_get_user_content_manager(gtk::webKitWebViewOf(*m_view));
        g_signal_connect(
            manager, (std::string("script-message-received::") + name).c_str(), G_CALLBACK(handler), &m_received);
        webkit_user_content_manager_register_script_message_handler(manager, name, nullptr);
    }

    int m_received = 0;
    std::shared_ptr<platform::WKUserContentController> m_content =
        platform::Platform::current().makeUserContentController();
    std::shared_ptr<platform::WKWebView> m_view = platform::Platform::current().makeWebView({}, { m_content });
    examples::Page m_page { gtk::webKitWebViewOf(*m_view) };
};

/// Posts so many messages in each round, with the handler `reference` for comparison.
void compare(Receiver& receiver, std::string const& name, std::string const& body, int count = 1,
    std::string const& reference = "bare")
{
    bench::Comparison(count > 1 ? 101 : 21, 1)
        .printTimes(
            name, [&] { return receiver.secondsOf("converted", body, count); },
            reference == "bare" ? "a handler that does nothing" : "a handler that reads it",
            [&] { return receiver.secondsOf(reference, body, count); });
}

}

int main()
{
    gtk_init();
    tests::TemporaryDirectory const folder;
    gtk::install({ .bundleIdentifier = "com.zelvora.bench", .appName = "Bench", .dataDirectory = folder.path() });
    Receiver receiver;
    std::fprintf(stderr, "Receiving a message\n");
    constexpr int many = 300;
    compare(receiver, "a message to close", "{ action: 'close' }", many);
    compare(
        receiver, "a message to store a text", "{ action: 'setItem', key: 'cart', value: 'tea', expire: 60 }", many);
    compare(receiver, "a message with an event of five members",
        "{ action: 'saveEvent', data: { eventId: 'product_view', productId: 'moon-jar', price: 89000, "
        "page: '/v1/product.html', number: 7 } }",
        many);
    compare(
        receiver, "a message of 10,000 objects", "Array.from({ length: 10000 }, (_, n) => ({ n, text: 'text' + n }))");
    compare(receiver, "a message of 50,000 texts", "Array.from({ length: 50000 }, (_, n) => 'text' + n)");
    compare(receiver, "a message of 50,000 numbers", "Array.from({ length: 50000 }, (_, n) => n / 3)");
    compare(receiver, "a message with a text of a million letters", "{ data: 'x'.repeat(1000000) }", 1, "reading");
    compare(
        receiver, "a message with a million letters of Korean", "{ data: '\\ub2ec'.repeat(1000000) }", 1, "reading");
    return EXIT_SUCCESS;
}
