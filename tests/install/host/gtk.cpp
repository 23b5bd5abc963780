#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraAdapters/gtk/Platform.h"
#include "ZelvoraAdapters/memory/ForwardingPlatform.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include <cstdio>
#include <memory>

using namespace zelvora;

namespace {

class HostClock final : public platform::Clock {
public:
    platform::Date now() const override { return { 1'767'225'600 }; }
};

/// The Linux platform with a clock of the host's.
class HostPlatform final : public memory::ForwardingPlatform {
public:
    using ForwardingPlatform::ForwardingPlatform;

    // platform::Platform
    platform::Clock& clock() override { return m_clock; }

private:
    HostClock m_clock;
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
    platform::Platform::install(std::make_unique<HostPlatform>(std::make_unique<gtk::Platform>(
        gtk::HostOptions { .bundleIdentifier = "com.example.host", .appName = "Host", .safeAreaInsets = { 20, 10 } })));
    if (platform::Platform::current().clock().now() != HostClock().now())
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
