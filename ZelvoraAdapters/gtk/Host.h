#pragma once

#include "ZelvoraAdapters/gtk/HostOptions.h"
#include "ZelvoraAdapters/gtk/UIKit/NavigationController.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"
#include "ZelvoraPlatform/WebKit/WKWebView.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <memory>

// How a host with widgets of GTK meets the SDK. Main thread.
//
//     gtk::install({ .bundleIdentifier = "com.example.shop", .appName = "Example" });
//     auto home = gtk::wrapScreen(homePage);
//     auto navigation = gtk::NavigationController::create(home);
//     gtk::setRootViewController(window, navigation);
//     ...
//     sdk.setHeaderViewProvider([](auto&) { return gtk::wrapWidget(makeHeader()); });
//     sdk.start(home);
namespace zelvora::gtk {

/// Makes the platform and installs it. Once, after `gtk_init` (an application's "startup" comes after it) and before
/// the SDK is first used.
ZELVORA_API void install(HostOptions options);

/// A widget as a view, such as a header or a footer; its natural height is the view's. The view holds the widget and
/// takes it out of where it was.
[[nodiscard]] ZELVORA_API std::shared_ptr<platform::UIView> wrapWidget(GtkWidget* widget);

/// A widget as a screen, such as the first one of a navigation stack.
[[nodiscard]] ZELVORA_API std::shared_ptr<platform::UIViewController> wrapScreen(GtkWidget* widget);

/// A window as a presenter: what it presents covers the window's content. The window must have its child by then; it
/// may be destroyed at any time, and then nothing is presented. A plain `GtkWindow` or `GtkApplicationWindow`: one of
/// a library that keeps its child to itself, as libadwaita's do, cannot be covered.
[[nodiscard]] ZELVORA_API std::shared_ptr<platform::UIViewController> wrapWindow(GtkWindow* window);

/// Makes the controller's view the window's content, and ends what was presented over the former one. The window keeps
/// the controller until it is destroyed or is given another. The same windows as for `wrapWindow`.
ZELVORA_API void setRootViewController(GtkWindow* window, std::shared_ptr<platform::UIViewController> controller);

/// The widget of a view, for a host that places the view itself. It lives as long as the view and has no size of its
/// own: let it expand. Who puts it into a container keeps the view.
[[nodiscard]] ZELVORA_API GtkWidget* widgetOf(platform::UIView const& view);

/// The engine's own web view, for what the SDK does not cover. It lives as long as the view.
[[nodiscard]] ZELVORA_API WebKitWebView* webKitWebViewOf(platform::WKWebView const& view);

}
