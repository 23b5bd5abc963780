#pragma once

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraPlatform/UIKit/UIView.h"
#include "examples/host/LoadWatch.h"

#include <gtk/gtk.h>

#include <memory>
#include <string>

namespace zelvora::examples {

/// What the app shows over the shop: that the first page is on its way, or that a page could not be loaded, with a
/// button, named "try-again". While a page loads, a line at the top shows how far it is. Main thread.
class ShopCover final
    : public platform::UIView
    , private LoadWatcher {
public:
    /// Lays a cover over the web view, which must be in a container. The container keeps it.
    static std::shared_ptr<ShopCover> layOver(ZelvoraWebView& webView);

    /// Whether it says that a page could not be loaded.
    [[nodiscard]] bool showsFailure() const;

private:
    explicit ShopCover(ZelvoraWebView& webView);

    // LoadWatcher
    void didStartLoad() override;
    void didProgress(double progress) override;
    void didCommitLoad() override;
    void didFinishLoad() override;
    void didFailLoad(std::string const& url, std::string const& reason, PageBefore pageBefore) override;

    void place(platform::UIView& webView);
    void avoidFlash();
    [[nodiscard]] GtkWidget* makeFailure();
    void show(char const* page);
    void tryAgain();

    gtk::GObjectPointer<WebKitWebView> m_engine;
    GtkWidget* m_stack;
    GtkWidget* m_back = nullptr;
    // In a view beside this one. Without progress it shows nothing.
    GtkWidget* m_progress;
    std::string m_failedURL;
    bool m_hasPage = false;
    LoadWatch m_watch;
};

}
