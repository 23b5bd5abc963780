#pragma once

#include "ZelvoraPlatform/Platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zelvora::uikit {

/// The platform on the phone: the phone's own frameworks. `install` in "Host.h" makes it. Any thread.
class Platform final : public platform::Platform {
public:
    Platform();
    Platform(Platform const&) = delete;
    Platform& operator=(Platform const&) = delete;
    ~Platform() override;

    // platform::Platform
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
    /// What the headers of the system are needed for.
    struct Services;
    std::unique_ptr<Services> m_services;
};

}
