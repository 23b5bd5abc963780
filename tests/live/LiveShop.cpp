#include "tests/live/LiveShop.h"

#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"
#include "examples/driving/LocalService.h"
#include "examples/driving/engineOf.h"

#include <array>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <utility>

namespace zelvora::tests {

using gtk::runMainLoopUntil;

struct LiveShop::Errors {
    std::mutex mutex;
    std::vector<ZelvoraSDKError> list;
};

namespace {

constexpr int phoneWidth = 390;
constexpr int phoneHeight = 844;

GtkWidget* makeBar(char const* text, int height)
{
    auto* const bar = gtk_label_new(text);
    gtk_widget_set_size_request(bar, -1, height);
    return bar;
}

}

LiveShop::LiveShop(platform::ATTrackingAuthorizationStatus status)
    : m_data(m_directory.path() / "app")
    , m_certificates(m_directory.path() / "service")
    , m_errors(std::make_shared<Errors>())
{
    auto started = examples::Service::start({ .dataDirectory = m_certificates });
    if (!started) {
        std::cerr << "The local service did not start: " << started.error() << '\n';
        std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
    }
    m_service = std::move(*started);
    m_port = m_service->port();
    if (status != platform::ATTrackingAuthorizationStatus::NotDetermined)
        gtk::TrackingStore(m_data).setStatus(status);
    install();
}

LiveShop::LiveShop(std::filesystem::path const& data, std::filesystem::path const& certificates, std::uint16_t port)
    : m_data(data)
    , m_certificates(certificates)
    , m_port(port)
    , m_errors(std::make_shared<Errors>())
{
    install();
}

LiveShop::~LiveShop()
{
    ZelvoraSDK::shared().setOnPageNavigation(nullptr);
    m_page.reset();
}

void LiveShop::install()
{
    if (!gtk_init_check()) {
        std::cerr << "The live tests need a display; run them by ./run test, or under xvfb-run.\n";
        std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
    }
    auto options = examples::localServiceOptions(m_port, m_certificates);
    options.bundleIdentifier = "com.zelvora.live";
    options.appName = "Live";
    options.dataDirectory = m_data;
    gtk::install(std::move(options));
    std::array<char const*, 2> const korean { "ko-KR", nullptr };
    webkit_web_context_set_preferred_languages(webkit_web_context_get_default(), korean.data());
    m_window = GTK_WINDOW(gtk_window_new());
    gtk_window_set_default_size(m_window, phoneWidth, phoneHeight);
    gtk_window_set_child(m_window, gtk_label_new("Home"));
    m_presenter = gtk::wrapWindow(m_window);
    gtk_window_present(m_window);
}

void LiveShop::initialize(std::shared_ptr<ZelvoraSDK::ZelvoraSDKDelegate> const& delegate)
{
    auto& sdk = ZelvoraSDK::shared();
    sdk.setOnPageNavigation([this](std::string const& url) { m_urls.push_back(url); });
    auto const onError = [errors = m_errors](std::optional<ZelvoraSDKError> const& error) {
        std::scoped_lock const lock(errors->mutex);
        errors->list.push_back(error.value());
    };
    auto const header = [](platform::UIViewController&) { return gtk::wrapWidget(makeBar("Header", 50)); };
    auto const footer = [](platform::UIViewController&) { return gtk::wrapWidget(makeBar("Footer", 60)); };
    sdk.initialize("user 가", "demo-key", true, false, true, header, footer, delegate, onError);
}

bool LiveShop::open()
{
    ZelvoraSDK::shared().start(m_presenter);
    if (!runMainLoopUntil([] { return ZelvoraSDK::shared().activeWebView() != nullptr; }))
        return false;
    m_engine = examples::engineOf(*ZelvoraSDK::shared().activeWebView());
    m_page = std::make_unique<examples::Page>(m_engine);
    return m_page->waitUntilReady("/v1/");
}

bool LiveShop::openPage(std::string const& name)
{
    (void)page().evaluate("(location.href = " + examples::Page::literal(name) + " + location.search, true)");
    return page().waitUntilReady("/" + name);
}

std::size_t LiveShop::collectedBatches()
{
    return m_service->collected().batches().size();
}

std::vector<ZelvoraSDKError> LiveShop::errors()
{
    std::scoped_lock const lock(m_errors->mutex);
    return m_errors->list;
}

bool LiveShop::logHas(std::string const& text)
{
    return page().waitFor("document.getElementById('log').textContent.includes(" + examples::Page::literal(text) + ")");
}

}
