// What a page's message costs the host's main thread until it is a value. The reference is a handler that the engine
// calls and that does nothing, or reads a text.

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/WebKit/ScriptValue.h"
#include "bench/BareBridge.h"
#include "bench/Comparison.h"
#include "examples/driving/Page.h"

#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

using namespace zelvora;
using examples::Page;

// Of this thread alone, as the page posts meanwhile.
double processorSeconds()
{
    timespec now {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + (static_cast<double>(now.tv_nsec) / 1e9);
}

using Handler = void (*)(JSCValue*);

/// A page that posts messages. There is one for all handlers, because one engine process is slower than another.
class Sender final {
public:
    double secondsOf(Handler handler, std::string const& body, int count)
    {
        m_handler = handler;
        m_received = 0;
        (void)m_page.evaluate("(window.body = " + body + ", true)");
        auto const begin = processorSeconds();
        (void)m_page.evaluate("(() => { for (let i = 0; i < " + std::to_string(count)
            + "; ++i) webkit.messageHandlers.zelvora.postMessage(body); return true; })()");
        if (!gtk::runMainLoopUntil([&] { return m_received == count; })) {
            std::fprintf(stderr, "A message did not arrive.\n");
            std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
        }
        return processorSeconds() - begin;
    }

private:
    Handler m_handler = nullptr;
    int m_received = 0;
    bench::BareBridge m_bridge { [this](JSCValue* body) {
        m_handler(body);
        ++m_received;
    } };
    Page m_page { m_bridge.webView() };
};

void ignore(JSCValue*) { }

void convert(JSCValue* body)
{
    if (!gtk::toValue(body))
        std::abort();
}

void readText(JSCValue* body)
{
    auto const text = gtk::adopt(jsc_value_object_get_property(body, "data"));
    gtk::GBytesPointer const bytes(jsc_value_to_string_as_bytes(text.get()));
}

void compareMany(Sender& sender, std::string const& name, std::string const& body)
{
    constexpr int count = 300;
    bench::Comparison(101, 1).printTimes(
        name, [&] { return sender.secondsOf(convert, body, count); }, "a handler that does nothing",
        [&] { return sender.secondsOf(ignore, body, count); });
}

void compareLarge(Sender& sender, std::string const& name, std::string const& body, Handler handler = ignore)
{
    bench::Comparison(21, 1).printTimes(
        name, [&] { return sender.secondsOf(convert, body, 1); },
        handler == ignore ? "a handler that does nothing" : "a handler that reads it",
        [&] { return sender.secondsOf(handler, body, 1); });
}

}

int main()
{
    gtk_init();
    Sender sender;
    std::fprintf(stderr, "Receiving a message\n");
    compareMany(sender, "a message to close", "{ action: 'close' }");
    compareMany(sender, "a message to store a text", "{ action: 'setItem', key: 'cart', value: 'tea', expire: 60 }");
    compareMany(sender, "a message with an event of five members",
        "{ action: 'saveEvent', data: { eventId: 'product_view', productId: 'moon-jar', price: 89000, "
        "page: '/v1/product.html', number: 7 } }");
    compareLarge(
        sender, "a message of 10,000 objects", "Array.from({ length: 10000 }, (_, n) => ({ n, text: 'text' + n }))");
    compareLarge(sender, "a message of 50,000 texts", "Array.from({ length: 50000 }, (_, n) => 'text' + n)");
    compareLarge(sender, "a message of 50,000 numbers", "Array.from({ length: 50000 }, (_, n) => n / 3)");
    compareLarge(sender, "a message with a text of a million letters", "{ data: 'x'.repeat(1000000) }", readText);
    compareLarge(sender, "a message with a million letters of Korean", "{ data: '\\ub2ec'.repeat(1000000) }", readText);
    return EXIT_SUCCESS;
}
