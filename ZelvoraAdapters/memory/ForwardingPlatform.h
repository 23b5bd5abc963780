#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zelvora::memory {

/// A platform that passes every call to another one, its target. Derive from it to replace or observe single services
/// of any platform:
///
///     class OfflinePlatform final : public memory::ForwardingPlatform {
///     public:
///         using ForwardingPlatform::ForwardingPlatform;
///         [[nodiscard]] platform::URLSession& urlSession() override { return m_session; }
///
///     private:
///         OfflineSession m_session;
///     };
///
/// The target's parts go on using each other: they do not see what a derived class replaces.
class ZELVORA_API ForwardingPlatform : public platform::Platform {
public:
    /// The target must outlive this platform.
    explicit ForwardingPlatform(platform::Platform& target);
    /// Owns its target. A null target is a programming error that stops the process.
    explicit ForwardingPlatform(std::unique_ptr<platform::Platform> target);
    ForwardingPlatform(ForwardingPlatform const&) = delete;
    ForwardingPlatform& operator=(ForwardingPlatform const&) = delete;
    ~ForwardingPlatform() override;

    /// What the calls are passed to, for overrides that add something to it.
    [[nodiscard]] platform::Platform& target() const { return m_target; }

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
    std::unique_ptr<platform::Platform> m_owned;
    platform::Platform& m_target;
};

}
