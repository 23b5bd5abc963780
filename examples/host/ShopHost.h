#pragma once

#include "ZelvoraAdapters/gtk/Host.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/Platform.h"
#include "examples/host/HomePage.h"
#include "examples/host/Options.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zelvora::examples {

/// The app: a phone-sized window with a home screen, and the SDK configured to open the shop from it. Main thread.
class ShopHost final
    : public std::enable_shared_from_this<ShopHost>
    , private ZelvoraSDK::ZelvoraSDKDelegate {
public:
    /// Makes a platform of the host's own, on which the SDK runs.
    using MakePlatform = std::function<std::unique_ptr<platform::Platform>(gtk::HostOptions)>;

    /// Installs the platform and shows the window. The app runs until its window is closed.
    [[nodiscard]] static std::shared_ptr<ShopHost> create(
        GtkApplication* application, Options const& options, MakePlatform const& makePlatform = nullptr);

    /// Starts the SDK's initialization, which ends later.
    void initializeSDK();

    void presentShop();
    void pushShop();

    [[nodiscard]] GtkWindow* window() const { return m_window; }
    /// The latest data of the page's calls of the app's custom action.
    [[nodiscard]] std::string const& lastMessage() const { return m_lastMessage; }
    [[nodiscard]] int dismissals() const { return m_dismissals; }
    /// The code of the latest error from the SDK since its latest initialization; empty without one.
    [[nodiscard]] std::string const& lastErrorCode() const { return m_lastErrorCode; }
    /// The milliseconds from the latest `start` to the first message of its page; absent until that arrives.
    [[nodiscard]] std::optional<int> openingTime() const { return m_openingTime; }
    [[nodiscard]] HomePage& homePage() { return *m_homePage; }

private:
    ShopHost(GtkApplication* application, Options const& options);

    // ZelvoraSDK::ZelvoraSDKDelegate
    bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView& webView) override;
    void zelvoraSDKWillDismiss() override;

    void build();
    void registerActions();
    void didOpenShop();
    void didReceiveFirstMessage();
    void leaveShop(platform::UIViewController& container);
    void showError(std::optional<ZelvoraSDKError> const& error);

    GtkWindow* m_window;
    bool m_prewarms;
    std::unique_ptr<HomePage> m_homePage;
    std::shared_ptr<platform::UIViewController> m_home;
    std::shared_ptr<platform::UIViewController> m_windowPresenter;
    std::string m_lastMessage;
    std::string m_lastErrorCode;
    int m_dismissals = 0;
    gint64 m_startedAt = 0;
    std::optional<int> m_openingTime;
};

}
