#include "examples/host/ShopHost.h"

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "examples/driving/LocalService.h"
#include "examples/driving/engineOf.h"
#include "examples/host/ShopCover.h"
#include "examples/host/bars.h"
#include "examples/host/style.h"
#include "examples/host/texts.h"

#include <array>

namespace zelvora::examples {

namespace {

constexpr char const* bundleIdentifier = "com.zelvora.example.host";
constexpr int phoneWidth = 390;
constexpr int phoneHeight = 844;

gtk::HostOptions hostOptions(Options const& options)
{
    auto host = localServiceOptions(options.servicePort, options.certificates);
    host.bundleIdentifier = bundleIdentifier;
    host.appName = texts().appName;
    host.dataDirectory = options.data;
    return host;
}

// Pages are told the app's language, not the one of the engine's own menus.
void tellLanguageToPages()
{
    std::array<char const*, 2> const languages { languageTag(), nullptr };
    webkit_web_context_set_preferred_languages(webkit_web_context_get_default(), languages.data());
}

}

std::shared_ptr<ShopHost> ShopHost::create(
    GtkApplication* application, Options const& options, MakePlatform const& makePlatform)
{
    if (makePlatform)
        platform::Platform::install(makePlatform(hostOptions(options)));
    else
        gtk::install(hostOptions(options));
    installStyle(options.appearance);
    tellLanguageToPages();
    std::shared_ptr<ShopHost> host(new ShopHost(application, options));
    host->build();
    return host;
}

ShopHost::ShopHost(GtkApplication* application, Options const& options)
    : m_window(GTK_WINDOW(gtk_application_window_new(application)))
    , m_prewarms(options.prewarms)
{
}

void ShopHost::build()
{
    m_homePage = std::make_unique<HomePage>(HomePage::Actions {
        .present = [this] { presentShop(); },
        .push = [this] { pushShop(); },
        .upload =
            [this] {
                ZelvoraSDK::shared().sendTrackingData();
                m_homePage->tell(texts().uploading);
            },
    });
    m_home = gtk::wrapScreen(m_homePage->widget());
    gtk_window_set_title(m_window, texts().appName);
    gtk_window_set_default_size(m_window, phoneWidth, phoneHeight);
    gtk::setRootViewController(m_window, gtk::makeNavigationController(m_home));
    m_windowPresenter = gtk::wrapWindow(m_window);
    gtk_window_present(m_window);
}

void ShopHost::initializeSDK()
{
    m_lastErrorCode.clear();
    if (m_prewarms)
        gtk::prewarm();
    registerActions();
    auto const leave = [this](platform::UIViewController& container) { leaveShop(container); };
    auto const header = [this, leave](platform::UIViewController& container) {
        // The page's view is made after the header.
        platform::Platform::current().mainQueue().async([this] { didOpenShop(); });
        // The container owns its header, so the header may refer to it.
        return gtk::wrapWidget(makeHeader([leave, &container] { leave(container); }));
    };
    auto const footer = [](platform::UIViewController&) { return gtk::wrapWidget(makeFooter()); };
    auto const onError = [this](std::optional<ZelvoraSDKError> const& error) {
        // Lookup errors arrive on a background thread.
        platform::Platform::current().mainQueue().async([this, error] { showError(error); });
    };
    std::shared_ptr<ZelvoraSDK::ZelvoraSDKDelegate> const delegate(shared_from_this(), this);
    ZelvoraSDK::shared().initialize("홍길동", "demo-key", true, false, true, header, footer, delegate, onError);
}

void ShopHost::registerActions()
{
    auto& sdk = ZelvoraSDK::shared();
    sdk.addCustomAction("showMessage", [this](std::optional<std::string> const& data) {
        m_lastMessage = data.value_or("(no data)");
        m_homePage->tell("showMessage: " + m_lastMessage);
    });
    sdk.setOnPageNavigation([this](std::string const& url) {
        m_homePage->addPageNavigation(url);
        m_homePage->showEventQueue();
    });
}

void ShopHost::presentShop()
{
    m_startedAt = g_get_monotonic_time();
    ZelvoraSDK::shared().start(m_windowPresenter);
}

void ShopHost::pushShop()
{
    m_startedAt = g_get_monotonic_time();
    ZelvoraSDK::shared().start(m_home);
}

void ShopHost::didOpenShop()
{
    auto const webView = ZelvoraSDK::shared().activeWebView();
    // It may have been closed at once.
    if (!webView || !webView->superview())
        return;
    ShopCover::layOver(*webView);
    m_openingTime.reset();
    auto* const content = webkit_web_view_get_user_content_manager(engineOf(*webView));
    g_signal_connect(content, "script-message-received::zelvora",
        G_CALLBACK(+[](WebKitUserContentManager* manager, JSCValue*, ShopHost* self) {
            g_signal_handlers_disconnect_by_data(manager, self);
            self->didReceiveFirstMessage();
        }),
        this);
}

void ShopHost::didReceiveFirstMessage()
{
    constexpr gint64 microseconds = 1000;
    m_openingTime = static_cast<int>((g_get_monotonic_time() - m_startedAt) / microseconds);
    m_homePage->tellOpeningTime(*m_openingTime);
}

void ShopHost::leaveShop(platform::UIViewController& container)
{
    if (auto const navigation = container.navigationController())
        navigation->popViewController(platform::Animated::Yes);
    else
        container.dismiss(platform::Animated::Yes);
}

void ShopHost::showError(std::optional<ZelvoraSDKError> const& error)
{
    if (!error)
        return;
    m_lastErrorCode = error->code();
    m_homePage->tell(m_lastErrorCode + ": " + error->errorDescription().value_or(""));
}

bool ShopHost::zelvoraSDKShouldHandleBackAction(ZelvoraWebView&)
{
    return true;
}

void ShopHost::zelvoraSDKWillDismiss()
{
    ++m_dismissals;
    m_homePage->showEventQueue();
}

}
