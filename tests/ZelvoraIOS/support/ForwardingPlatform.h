#pragma once

#include "ZelvoraAdapters/memory/Platform.h"

namespace zelvora::tests {

/// A platform in memory whose derived classes replace single services, to watch a call as it happens or to run on
/// real threads.
class ForwardingPlatform : public platform::Platform {
public:
    explicit ForwardingPlatform(memory::Options options = {}) : memory(std::move(options)) { }

    // platform::Platform
    [[nodiscard]] std::optional<platform::ServiceAddresses> serviceAddresses() const override
    {
        return memory.serviceAddresses();
    }
    [[nodiscard]] platform::Bundle& mainBundle() override { return memory.mainBundle(); }
    [[nodiscard]] platform::Clock& clock() override { return memory.clock(); }
    [[nodiscard]] platform::UserDefaults& standardUserDefaults() override { return memory.standardUserDefaults(); }
    [[nodiscard]] platform::NotificationCenter& notificationCenter() override { return memory.notificationCenter(); }
    [[nodiscard]] platform::URLSession& urlSession() override { return memory.urlSession(); }
    [[nodiscard]] platform::JSONSerialization& jsonSerialization() override { return memory.jsonSerialization(); }
    [[nodiscard]] platform::DispatchQueue& mainQueue() override { return memory.mainQueue(); }
    [[nodiscard]] platform::DispatchQueue& globalQueue() override { return memory.globalQueue(); }
    [[nodiscard]] platform::ATTrackingManager& trackingManager() override { return memory.trackingManager(); }
    [[nodiscard]] platform::ASIdentifierManager& identifierManager() override { return memory.identifierManager(); }
    [[nodiscard]] platform::UIApplication& application() override { return memory.application(); }
    [[nodiscard]] std::unique_ptr<platform::Logger> makeLogger(
        std::string const& subsystem, std::string const& category) override
    {
        return memory.makeLogger(subsystem, category);
    }
    [[nodiscard]] std::unique_ptr<platform::UIView::Peer> makeViewPeer(
        platform::UIView& owner, platform::CGRect frame) override
    {
        return memory.makeViewPeer(owner, frame);
    }
    [[nodiscard]] std::unique_ptr<platform::UIViewController::Peer> makeViewControllerPeer(
        platform::UIViewController& owner) override
    {
        return memory.makeViewControllerPeer(owner);
    }
    [[nodiscard]] std::shared_ptr<platform::WKUserContentController> makeUserContentController() override
    {
        return memory.makeUserContentController();
    }
    [[nodiscard]] std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override
    {
        return memory.makeWebView(frame, std::move(configuration));
    }
    void animate(platform::TimeInterval duration, std::function<void()> const& animations) override
    {
        memory.animate(duration, animations);
    }

    memory::Platform memory;
};

/// Makes a platform of this kind, installs it and returns it.
template<typename Installed, typename... Arguments>
Installed& install(Arguments&&... arguments)
{
    auto platform = std::make_unique<Installed>(std::forward<Arguments>(arguments)...);
    auto& installed = *platform;
    platform::Platform::install(std::move(platform));
    return installed;
}

}
