#pragma once

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"

#include <memory>
#include <string>

namespace zelvora::bench {

/// The platform in memory, but with the real preferences, so that storage is measured and nothing else.
class JournalPlatform final : public platform::Platform {
public:
    explicit JournalPlatform(std::string const& path);

    [[nodiscard]] memory::Platform& memory() { return m_memory; }

    // platform::Platform
    platform::Bundle& mainBundle() override { return m_memory.mainBundle(); }
    platform::Clock& clock() override { return m_memory.clock(); }
    platform::UserDefaults& standardUserDefaults() override { return m_userDefaults; }
    platform::NotificationCenter& notificationCenter() override { return m_memory.notificationCenter(); }
    platform::URLSession& urlSession() override { return m_memory.urlSession(); }
    platform::JSONSerialization& jsonSerialization() override { return m_memory.jsonSerialization(); }
    platform::DispatchQueue& mainQueue() override { return m_memory.mainQueue(); }
    platform::DispatchQueue& globalQueue() override { return m_memory.globalQueue(); }
    platform::ATTrackingManager& trackingManager() override { return m_memory.trackingManager(); }
    platform::ASIdentifierManager& identifierManager() override { return m_memory.identifierManager(); }
    platform::UIApplication& application() override { return m_memory.application(); }
    std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category) override;
    std::unique_ptr<platform::UIView::Peer> makeViewPeer(platform::UIView& owner, platform::CGRect frame) override
    {
        return m_memory.makeViewPeer(owner, frame);
    }
    std::unique_ptr<platform::UIViewController::Peer> makeViewControllerPeer(platform::UIViewController& owner) override
    {
        return m_memory.makeViewControllerPeer(owner);
    }
    std::shared_ptr<platform::WKUserContentController> makeUserContentController() override
    {
        return m_memory.makeUserContentController();
    }
    std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override
    {
        return m_memory.makeWebView(frame, std::move(configuration));
    }
    void animate(platform::TimeInterval duration, std::function<void()> const& animations) override
    {
        m_memory.animate(duration, animations);
    }

private:
    memory::Platform m_memory;
    shared::JournaledUserDefaults m_userDefaults;
};

}
