#include "examples/host/ShopHost.h"

#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "examples/driving/LocalService.h"
#include "examples/host/bars.h"

namespace zelvora::examples {

namespace {

constexpr char const* bundleIdentifier = "com.zelvora.example.host";
constexpr int phoneWidth = 390;
constexpr int phoneHeight = 844;

gtk::HostOptions hostOptions(Options const& options)
{
    auto host = localServiceOptions(options.servicePort, options.certificates);
    host.bundleIdentifier = bundleIdentifier;
    host.appName = "예제 앱";
    host.dataDirectory = options.data;
    return host;
}

}

std::shared_ptr<ShopHost> ShopHost::create(
    GtkApplication* application, Options const& options, MakePlatform const& makePlatform)
{
    if (makePlatform)
        platform::Platform::install(makePlatform(hostOptions(options)));
    else
        gtk::install(hostOptions(options));
    installStyle();
    std::shared_ptr<ShopHost> host(new ShopHost(application));
    host->build();
    return host;
}

ShopHost::ShopHost(GtkApplication* application) : m_window(GTK_WINDOW(gtk_application_window_new(application))) { }

void ShopHost::build()
{
    m_homePage = std::make_unique<HomePage>(HomePage::Actions {
        .present = [this] { presentShop(); },
        .push = [this] { pushShop(); },
        .upload =
            [this] {
                ZelvoraSDK::shared().sendTrackingData();
                m_homePage->tell("이벤트를 보냅니다 · Uploading");
            },
    });
    m_home = gtk::wrapScreen(m_homePage->widget());
    gtk_window_set_title(m_window, "Example host");
    gtk_window_set_default_size(m_window, phoneWidth, phoneHeight);
    gtk::setRootViewController(m_window, gtk::makeNavigationController(m_home));
    m_windowPresenter = gtk::wrapWindow(m_window);
    gtk_window_present(m_window);
}

void ShopHost::initializeSDK()
{
    m_lastErrorCode.clear();
    registerActions();
    auto const leave = [this](platform::UIViewController& container) { leaveShop(container); };
    auto const header = [leave](platform::UIViewController& container) {
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
    ZelvoraSDK::shared().start(m_windowPresenter);
}

void ShopHost::pushShop()
{
    ZelvoraSDK::shared().start(m_home);
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
