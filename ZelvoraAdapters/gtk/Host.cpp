#include "ZelvoraAdapters/gtk/Host.h"

#include "ZelvoraAdapters/gtk/Platform.h"
#include "ZelvoraAdapters/gtk/UIKit/NavigationController.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/View.h"
#include "ZelvoraAdapters/gtk/UIKit/ViewController.h"
#include "ZelvoraAdapters/gtk/UIKit/WindowPresentations.h"
#include "ZelvoraAdapters/gtk/WebKit/WebView.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::gtk {

using platform::UIView;
using platform::UIViewController;

namespace {

/// The host's window, as a presenter.
class WindowController final : public UIViewController {
public:
    explicit WindowController(GtkWindow* window) : UIViewController(std::make_unique<Peer>(*this, window)) { }

private:
    class Peer final : public UIViewControllerPeer {
    public:
        Peer(UIViewController& owner, GtkWindow* window) : UIViewControllerPeer(owner), m_window(window)
        {
            g_object_add_weak_pointer(G_OBJECT(window), &m_window);
        }
        Peer(Peer const&) = delete;
        Peer& operator=(Peer const&) = delete;
        ~Peer() override { g_clear_weak_pointer(&m_window); }

        // UIViewControllerPeer
        [[nodiscard]] GtkWindow* window() const override { return static_cast<GtkWindow*>(m_window); }

    private:
        // Reset when the window is destroyed.
        gpointer m_window;
    };
};

constexpr char const* rootKey = "zelvora-root-view-controller";

/// Whether a function was given what it asks for; if not, a warning names the function and the thing.
bool isGiven(bool given, char const* function, char const* thing)
{
    if (!given)
        g_log("Zelvora", G_LOG_LEVEL_WARNING, "gtk::%s was given no %s", function, thing);
    return given;
}

}

void install(HostOptions options)
{
    if (!gtk_is_initialized())
        platform::fatalError("gtk::install was called before gtk_init");
    platform::Platform::install(std::make_unique<Platform>(std::move(options)));
}

void prewarm()
{
    Platform::current().prewarm();
}

std::shared_ptr<UIView> wrapWidget(GtkWidget* widget)
{
    return isGiven(GTK_IS_WIDGET(widget), "wrapWidget", "widget") ? View::create(widget) : nullptr;
}

std::shared_ptr<UIViewController> wrapScreen(GtkWidget* widget)
{
    return isGiven(GTK_IS_WIDGET(widget), "wrapScreen", "widget") ? std::make_shared<ViewController>(widget) : nullptr;
}

std::shared_ptr<UIViewController> wrapWindow(GtkWindow* window)
{
    return isGiven(GTK_IS_WINDOW(window), "wrapWindow", "window") ? std::make_shared<WindowController>(window)
                                                                  : nullptr;
}

std::shared_ptr<platform::UINavigationController> makeNavigationController(
    std::shared_ptr<UIViewController> rootViewController)
{
    return isGiven(rootViewController != nullptr, "makeNavigationController", "controller")
        ? NavigationController::create(std::move(rootViewController))
        : nullptr;
}

void setRootViewController(GtkWindow* window, std::shared_ptr<UIViewController> controller)
{
    if (!isGiven(GTK_IS_WINDOW(window), "setRootViewController", "window")
        || !isGiven(controller != nullptr, "setRootViewController", "controller"))
        return;
    using Held = std::shared_ptr<UIViewController>;
    WindowPresentations::of(window).setContent(widgetOf(controller->view()));
    g_object_set_data_full(G_OBJECT(window), rootKey, new Held(std::move(controller)), [](gpointer data) {
        std::unique_ptr<Held> const held(static_cast<Held*>(data));
        // The controller that is being replaced may be the caller.
        releaseLater(*held);
    });
}

GtkWidget* widgetOf(UIView const& view)
{
    return UIViewPeer::of(view).widget();
}

WebKitWebView* webKitWebViewOf(platform::WKWebView const& view)
{
    return static_cast<WebView const&>(view).webKitWebView();
}

}
