#pragma once

#include "ZelvoraAdapters/gtk/HostOptions.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zelvora::gtk {

/// The platform on Linux desktops and phones. Most hosts call `install` in "Host.h" and never see it.
///
/// A host that wants to replace some of its services makes one, wraps it in a platform of its own that forwards
/// everything else, and installs that one with `platform::Platform::install`. The views, controllers and web views must
/// stay those of this platform: the functions in "Host.h" work with no others.
///
/// There is at most one at a time; making a second one stops the process. It is made on the main thread. If it still
/// exists when the process exits, it writes the preferences to the disk then.
class ZELVORA_API Platform final : public platform::Platform {
public:
    /// After `gtk_init`.
    explicit Platform(HostOptions options);
    Platform(Platform const&) = delete;
    Platform& operator=(Platform const&) = delete;
    ~Platform() override;

    /// The one that exists, whether it is installed itself or wrapped in another platform. Before it is made, a
    /// programming error that stops the process.
    [[nodiscard]] static Platform& current();

    /// Those of the options.
    [[nodiscard]] SafeAreaInsets const& safeAreaInsets() const;

    /// See `prewarm` in "Host.h". Main thread.
    void prewarm();

    /// Makes the preferences written so far survive a power cut. Any thread.
    void synchronizeUserDefaults();

    // platform::Platform
    [[nodiscard]] std::optional<platform::ServiceAddresses> serviceAddresses() const override;
    [[nodiscard]] bool isMainThread() const override;
    void complain(std::string const& sentence) override;
    [[nodiscard]] platform::Bundle& mainBundle() override;
    [[nodiscard]] platform::Clock& clock() override;
    [[nodiscard]] platform::UserDefaults& standardUserDefaults() override;
    [[nodiscard]] platform::NotificationCenter& notificationCenter() override;
    [[nodiscard]] platform::URLSession& urlSession() override;
    [[nodiscard]] platform::JSONSerialization& jsonSerialization() override;
    [[nodiscard]] platform::DispatchQueue& mainQueue() override;
    [[nodiscard]] platform::DispatchQueue& globalQueue() override;
    [[nodiscard]] platform::ATTrackingManager& trackingManager() override;
    [[nodiscard]] platform::ASIdentifierManager& identifierManager() override;
    [[nodiscard]] platform::UIApplication& application() override;
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override;
    [[nodiscard]] std::unique_ptr<platform::UIView::Peer> makeViewPeer(
        platform::UIView& owner, platform::CGRect frame, std::optional<std::string_view> nativeClass) override;
    [[nodiscard]] std::unique_ptr<platform::UIViewController::Peer> makeViewControllerPeer(
        platform::UIViewController& owner, std::optional<std::string_view> nativeClass) override;
    [[nodiscard]] std::shared_ptr<platform::WKUserContentController> makeUserContentController() override;
    [[nodiscard]] std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override;
    void animate(platform::TimeInterval duration, std::function<void()> const& animations) override;

private:
    /// What the headers of the toolkit, the engine and the loader are needed for.
    struct Services;
    std::unique_ptr<Services> m_services;
};

}
