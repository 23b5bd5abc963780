#pragma once

#include "ZelvoraAdapters/gtk/HostOptions.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <gtk/gtk.h>

#include <memory>

// As in <webkit/webkit.h>, which only a host that uses the engine itself needs.
typedef struct _WebKitWebView WebKitWebView; // NOLINT(modernize-use-using,bugprone-reserved-identifier): the engine's

/// What a host with GTK widgets calls. Main thread. Where a widget, a window or a controller is asked for, anything
/// else gives nullptr and a warning.
///
///     gtk::install({ .bundleIdentifier = "com.example.shop", .appName = "Example" });
///     auto home = gtk::wrapScreen(homePage);
///     auto navigation = gtk::makeNavigationController(home);
///     gtk::setRootViewController(window, navigation);
///     ...
///     sdk.setHeaderViewProvider([](auto&) { return gtk::wrapWidget(makeHeader()); });
///     sdk.start(home);
namespace zelvora::gtk {

/// Makes a `gtk::Platform` and installs it. Call it once, after `gtk_init` (an application's "startup" signal is late
/// enough) and before the SDK is first used; anything else stops the process.
ZELVORA_API void install(HostOptions options);

/// Makes the first container show its page sooner: starts the engine's processes and makes a web view ahead, which the
/// SDK's next web view gets. No page is loaded. Call it while the user has something to look at, such as when the
/// screen appears from which the shop is opened. Does nothing while a web view is ready. The web view takes memory
/// until it is used (docs/performance.md says how much). It is dropped when the app goes inactive and when the system
/// warns of low memory, and only another call makes a new one. Once a site was shown, the engine keeps its process for
/// a while by itself, so later containers gain little.
ZELVORA_API void prewarm();

/// A view that shows a widget, such as a header or a footer, and is as high as the widget's natural height. The view
/// holds a reference to the widget and removes it from its present parent: make a new widget for each view. A widget
/// that another view shows is taken from there with a warning. The SDK's container behind it is white in every theme,
/// so text needs a background, such as that of the style class "background", to be read in a dark one.
[[nodiscard]] ZELVORA_API std::shared_ptr<platform::UIView> wrapWidget(GtkWidget* widget);

/// A screen that shows a widget, such as the first screen of a navigation stack. It holds the widget as `wrapWidget`
/// does.
[[nodiscard]] ZELVORA_API std::shared_ptr<platform::UIViewController> wrapScreen(GtkWidget* widget);

/// A window as a presenter: what it presents covers the window's content. Set the window's child before. The window may
/// be destroyed at any time; after that, nothing is presented. It must be a plain `GtkWindow` or
/// `GtkApplicationWindow`: a window class that manages its child itself, as those of libadwaita do, cannot be covered.
[[nodiscard]] ZELVORA_API std::shared_ptr<platform::UIViewController> wrapWindow(GtkWindow* window);

/// A navigation stack with its first screen. Screens slide in from the trailing edge, and a drag from the left edge
/// takes the top screen off. It has no bar of its own.
///
/// A screen that is being dragged is off the stack from the beginning of the drag; it is back on the stack if the drag
/// ends too early, unless it was shown elsewhere meanwhile. A first screen that is on a stack already stops the
/// process.
[[nodiscard]] ZELVORA_API std::shared_ptr<platform::UINavigationController> makeNavigationController(
    std::shared_ptr<platform::UIViewController> rootViewController);

/// Makes the controller's view the window's content and dismisses what was presented over the previous content. The
/// window keeps the controller until it is destroyed or given another one. The same windows as for `wrapWindow`.
ZELVORA_API void setRootViewController(GtkWindow* window, std::shared_ptr<platform::UIViewController> controller);

/// The widget of a view, for a host that places the view itself. It lives as long as the view, so the host must keep
/// the view. It has no natural size: set it to expand.
[[nodiscard]] ZELVORA_API GtkWidget* widgetOf(platform::UIView const& view);

/// The engine's own web view, for what the SDK does not cover. It lives as long as the view.
[[nodiscard]] ZELVORA_API WebKitWebView* webKitWebViewOf(platform::WKWebView const& view);

}
