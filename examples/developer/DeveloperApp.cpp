#include "examples/developer/DeveloperApp.h"

#include "ZelvoraAdapters/gtk/GLib/attach.h"
#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraAdapters/gtk/Platform.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "examples/developer/AnswerCheck.h"
#include "examples/driving/Picture.h"
#include "examples/driving/engineOf.h"

#include <utility>

namespace zelvora::developer {

namespace {

using platform::UIGestureRecognizerState;

// The first page needs the lookup, the engine's processes and a machine that may be busy.
constexpr double patienceAtStart = 120;

Language languageOfSystem()
{
    return std::string_view(g_get_language_names()[0]).starts_with("ko") ? Language::Korean : Language::English;
}

void complain(char const* domain, GLogLevelFlags level, char const* line, gpointer recorder)
{
    // Not through the observed queue: it would look like something that the SDK does with a message.
    gtk::Platform::current().mainQueue().async(
        [recorder = static_cast<Recorder*>(recorder), text = std::string(line)] { recorder->didComplain(text); });
    g_log_default_handler(domain, level, line, nullptr);
}

}

DeveloperApp::DeveloperApp(
    GtkApplication* application, Options const& options, std::unique_ptr<examples::Service> service)
    : m_options(options)
    , m_switches { .language = languageOfSystem() }
    , m_service(std::move(service))
    , m_recorder([] { return platform::Platform::current().clock().now(); })
{
    auto const makePlatform = [this](gtk::HostOptions const& host) {
        auto platform = std::make_unique<ObservedPlatform>(std::make_unique<gtk::Platform>(host), m_recorder);
        m_platform = platform.get();
        return platform;
    };
    examples::Options hostOptions;
    hostOptions.servicePort = m_service->port();
    hostOptions.certificates = m_service->authority().parent_path();
    hostOptions.data = options.data / "app";
    m_host = examples::ShopHost::create(application, hostOptions, makePlatform);
    m_recorder.setTrackingEndpoint(m_platform->serviceAddresses()->trackingEndpoint);
    m_surroundings.emplace(*m_service, *m_platform);
    m_values.emplace(m_platform->preferences(),
        StoredValues::prefixOf(m_platform->mainBundle().bundleIdentifier().value_or("unknown")));
    Panel::installStyle();
    m_panel = std::make_unique<Panel>(panelActions(), m_switches);
    m_screen.emplace(m_host->window(), *m_panel);
    m_screen->setSize(m_switches.size);
    m_surroundings->apply(m_switches);
    m_host->initializeSDK();
    observeHost();
    m_host->presentShop();
}

DeveloperApp::~DeveloperApp()
{
    m_recorder.setOnChange(nullptr);
    m_recorder.setOnAnswer(nullptr);
    g_log_remove_handler("Zelvora", m_log);
}

Panel::Actions DeveloperApp::panelActions()
{
    return {
        .reload =
            [this] {
                if (isOpen())
                    webkit_web_view_reload(engine());
                else
                    m_host->presentShop();
            },
        .upload = [this] { upload(); },
        .swipeBack = [this] { (void)swipeBack(); },
        .killPage = [this] { killPage(); },
        .toggleFooter = [this] { setFooterVisible(!isFooterVisible()); },
        .inspect = [this] { inspect(); },
        // Later, because the panel is made anew in another language, and the choice is a part of it.
        .change =
            [this](Switches const& switches) {
                m_platform->target().mainQueue().async([this, switches] { setSwitches(switches); });
            },
    };
}

void DeveloperApp::addActions(std::vector<std::string> const& names)
{
    auto& sdk = ZelvoraSDK::shared();
    for (auto const& name : names)
        sdk.addCustomAction(name, [](auto const&) { });
    for (auto const& [name, action] : sdk.getCustomActions()) {
        sdk.addCustomAction(name, [this, name, action](std::optional<std::string> const& data) {
            m_recorder.didCallAction(name, data);
            action(data);
        });
    }
}

void DeveloperApp::observeHost()
{
    auto& sdk = ZelvoraSDK::shared();
    addActions(m_options.actions);
    sdk.setOnPageNavigation([this, told = sdk.onPageNavigation()](std::string const& url) {
        m_recorder.didNavigate(url);
        told(url);
    });
    m_recorder.setOnChange([this] { refreshSoon(); });
    m_recorder.setOnAnswer([this](std::size_t message, std::string const& callback) {
        if (isOpen())
            checkAnswer(engine(), callback, [this, message, callback] { m_recorder.didLoseAnswer(message, callback); });
    });
    m_log = g_log_set_handler("Zelvora", G_LOG_LEVEL_WARNING, &complain, &m_recorder);
    m_tick = gtk::attach(g_timeout_source_new_seconds(1), [this] { refreshSoon(); });
    if (!m_options.isAddress()) {
        m_watch = std::make_unique<FolderWatch>(m_options.page, m_options.pictures, [this] {
            if (isOpen())
                webkit_web_view_reload(engine());
        });
    }
}

WebKitWebView* DeveloperApp::engine()
{
    auto const view = ZelvoraSDK::shared().activeWebView();
    return view ? examples::engineOf(*view) : nullptr;
}

ScriptedApp::Result DeveloperApp::waitUntilReady()
{
    if (!waitUntil([this] { return isOpen(); }, patienceAtStart)) {
        auto const& complaints = records().complaints;
        return std::unexpected(
            "the app did not open its screen" + (complaints.empty() ? "" : ": " + complaints.back()));
    }
    return ShownPage(engine()).waitUntilLoaded(patienceAtStart);
}

bool DeveloperApp::waitUntil(std::function<bool()> const& condition, double seconds)
{
    return gtk::runMainLoopUntil(condition, seconds);
}

bool DeveloperApp::waitUntilTrue(std::string const& expression, double seconds)
{
    return isOpen() && ShownPage(engine()).waitUntilTrue(expression, seconds);
}

ScriptedApp::Result DeveloperApp::run(std::string const& script)
{
    return isOpen() ? ShownPage(engine()).run(script) : std::unexpected("the screen is closed");
}

ScriptedApp::Result DeveloperApp::openScreen(double seconds)
{
    if (isOpen())
        return {};
    m_host->presentShop();
    if (!waitUntil([this] { return isOpen(); }, seconds))
        return std::unexpected("the app did not open its screen");
    return ShownPage(engine()).waitUntilLoaded(seconds);
}

std::string DeveloperApp::addressOf(std::string const& page) const
{
    auto const first = m_options.isAddress() ? m_options.page : m_service->address("hanok.shop") + "/v1/";
    gtk::GTextPointer const address(g_uri_resolve_relative(first.c_str(), page.c_str(), G_URI_FLAGS_NONE, nullptr));
    return address ? address.get() : page;
}

ScriptedApp::Result DeveloperApp::open(std::optional<std::string> const& page, double seconds)
{
    auto const wasOpen = isOpen();
    if (auto const opened = openScreen(seconds); !opened)
        return opened;
    if (!page && !wasOpen)
        return {};
    return ShownPage(engine()).load(addressOf(page.value_or("")), seconds);
}

ScriptedApp::Result DeveloperApp::reload(double seconds)
{
    return isOpen() ? ShownPage(engine()).reload(seconds) : openScreen(seconds);
}

// As the system reports a drag from the left edge that has ended.
ScriptedApp::Result DeveloperApp::swipeBack()
{
    auto const view = ZelvoraSDK::shared().activeWebView();
    auto const container = view ? view->parentViewController() : nullptr;
    if (!container)
        return std::unexpected("the screen is closed");
    for (auto const& recognizer : container->view().gestureRecognizers()) {
        if (!recognizer->shouldBegin())
            return std::unexpected("the app does not allow the swipe");
        recognizer->recognize(UIGestureRecognizerState::Began);
        recognizer->recognize(UIGestureRecognizerState::Ended);
    }
    return {};
}

void DeveloperApp::upload()
{
    ZelvoraSDK::shared().sendTrackingData();
}

void DeveloperApp::killPage()
{
    if (isOpen())
        webkit_web_view_terminate_web_process(engine());
}

void DeveloperApp::setFooterVisible(bool visible)
{
    ZelvoraSDK::shared().setFooterVisible(visible);
}

void DeveloperApp::setSwitches(Switches const& switches)
{
    auto const before = std::exchange(m_switches, switches);
    m_surroundings->apply(switches);
    if (isOpen())
        Surroundings::apply(switches, engine());
    m_screen->setSize(switches.size);
    m_panel->setSwitches(switches);
    refresh();
    if (isOpen() && before.language != switches.language)
        webkit_web_view_reload(engine());
}

void DeveloperApp::pass(double seconds)
{
    m_platform->pass(seconds);
    refresh();
}

void DeveloperApp::show(std::string const& part)
{
    m_panel->showPart(part);
}

ScriptedApp::Result DeveloperApp::takePicture(std::string const& name)
{
    std::error_code failure;
    std::filesystem::create_directories(m_options.pictures, failure);
    auto const file = m_options.pictures / (name + ".png");
    refresh();
    if (isOpen())
        ShownPage(engine()).waitUntilPainted();
    if (!examples::takePicture(m_host->window(), file))
        return std::unexpected("the picture cannot be written to " + file.string());
    return {};
}

std::optional<StoredValue> DeveloperApp::storedValue(std::string const& key) const
{
    return m_values->find(key, m_platform->clock().now());
}

Json DeveloperApp::queuedEvents() const
{
    return m_values->events();
}

bool DeveloperApp::isOpen() const
{
    return engine() != nullptr;
}

bool DeveloperApp::isFooterVisible() const
{
    return ZelvoraSDK::shared().isFooterVisible();
}

void DeveloperApp::inspect()
{
    if (!isOpen())
        return;
    auto* const inspector = webkit_web_view_get_inspector(engine());
    // In a window of its own: a phone's screen has no room for it.
    auto const detach = +[](WebKitWebInspector*) -> gboolean { return TRUE; };
    g_signal_handlers_disconnect_by_func(inspector, reinterpret_cast<gpointer>(detach), nullptr);
    g_signal_connect(inspector, "attach", G_CALLBACK(detach), nullptr);
    webkit_web_inspector_show(inspector);
}

void DeveloperApp::refreshSoon()
{
    if (m_refresh)
        return;
    m_refresh = gtk::attach(g_idle_source_new(), [this] {
        m_refresh.reset();
        refresh();
    });
}

void DeveloperApp::refresh()
{
    if (auto* const current = engine(); current != std::exchange(m_toldEngine, current) && current)
        Surroundings::apply(m_switches, current);
    auto const language = m_switches.language;
    auto const values = m_values->all(m_platform->storedKeys(), m_platform->clock().now());
    m_panel->show({ .address = ZelvoraSDK::shared().getCurrentUrl().value_or(""),
        .messages = messageRows(records(), language),
        .lists = { valueRows(values, language), eventRows(queuedEvents(), language), uploadRows(records(), language),
            navigationRows(records(), language) } });
}

}
