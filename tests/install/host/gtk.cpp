#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraAdapters/gtk/Platform.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include <cstdio>
#include <memory>
#include <utility>

using namespace zelvora;

namespace {

/// The Linux platform with a clock of the host's.
class HostPlatform final : public platform::Platform {
public:
    HostPlatform(gtk::HostOptions options, platform::Clock& clock) : m_gtk(std::move(options)), m_clock(clock) { }

    // platform::Platform
    std::optional<platform::ServiceAddresses> serviceAddresses() const override { return m_gtk.serviceAddresses(); }
    platform::Bundle& mainBundle() override { return m_gtk.mainBundle(); }
    platform::Clock& clock() override { return m_clock; }
    platform::UserDefaults& standardUserDefaults() override { return m_gtk.standardUserDefaults(); }
    platform::NotificationCenter& notificationCenter() override { return m_gtk.notificationCenter(); }
    platform::URLSession& urlSession() override { return m_gtk.urlSession(); }
    platform::JSONSerialization& jsonSerialization() override { return m_gtk.jsonSerialization(); }
    platform::DispatchQueue& mainQueue() override { return m_gtk.mainQueue(); }
    platform::DispatchQueue& globalQueue() override { return m_gtk.globalQueue(); }
    platform::ATTrackingManager& trackingManager() override { return m_gtk.trackingManager(); }
    platform::ASIdentifierManager& identifierManager() override { return m_gtk.identifierManager(); }
    platform::UIApplication& application() override { return m_gtk.application(); }
    std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category) override
    {
        return m_gtk.makeLogger(subsystem, category);
    }
    std::unique_ptr<platform::UIView::Peer> makeViewPeer(platform::UIView& owner, platform::CGRect frame) override
    {
        return m_gtk.makeViewPeer(owner, frame);
    }
    std::unique_ptr<platform::UIViewController::Peer> makeViewControllerPeer(platform::UIViewController& owner) override
    {
        return m_gtk.makeViewControllerPeer(owner);
    }
    std::shared_ptr<platform::WKUserContentController> makeUserContentController() override
    {
        return m_gtk.makeUserContentController();
    }
    std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override
    {
        return m_gtk.makeWebView(frame, std::move(configuration));
    }
    void animate(platform::TimeInterval duration, std::function<void()> const& animations) override
    {
        m_gtk.animate(duration, animations);
    }

private:
    gtk::Platform m_gtk;
    platform::Clock& m_clock;
};

class HostClock final : public platform::Clock {
public:
    platform::Date now() const override { return { 1'767'225'600 }; }
};

int fail(char const* what)
{
    std::fprintf(stderr, "%s\n", what);
    return 1;
}

}

// A home screen in a navigation stack, on the Linux adapter with one service replaced.
int main()
{
    gtk_init();
    static HostClock clock;
    platform::Platform::install(std::make_unique<HostPlatform>(
        gtk::HostOptions { .bundleIdentifier = "com.example.host", .appName = "Host", .safeAreaInsets = { 20, 10 } },
        clock));
    if (&platform::Platform::current().clock() != &clock)
        return fail("The clock is not the host's.");

    auto const home = gtk::wrapScreen(gtk_label_new("Home"));
    auto const navigation = gtk::makeNavigationController(home);
    if (home->navigationController() != navigation)
        return fail("The home screen is not on the navigation stack.");
    // The layout asks the wrapped platform for the safe area.
    home->view().layoutIfNeeded();
    // Nothing was initialized, so there is no shop to show.
    if (ZelvoraSDK::shared().createWebView() != nullptr)
        return fail("There is a web view without a shop.");
    return 0;
}
