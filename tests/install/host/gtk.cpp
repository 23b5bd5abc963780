#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"

#include <cstdio>

using namespace zelvora;

// A home screen in a navigation stack, on the Linux adapter.
int main()
{
    gtk_init();
    gtk::install({ .bundleIdentifier = "com.example.host", .appName = "Host" });
    auto const home = gtk::wrapScreen(gtk_label_new("Home"));
    auto const navigation = gtk::NavigationController::create(home);
    if (home->navigationController() != navigation) {
        std::fputs("The home screen is not on the navigation stack.\n", stderr);
        return 1;
    }
    // Nothing was initialized, so there is no shop to show.
    if (ZelvoraSDK::shared().createWebView() != nullptr) {
        std::fputs("There is a web view without a shop.\n", stderr);
        return 1;
    }
    return 0;
}
