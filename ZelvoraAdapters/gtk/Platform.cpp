#include "ZelvoraAdapters/gtk/Platform.h"

#include "ZelvoraAdapters/gtk/Foundation/DataDirectory.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/ViewAnimation.h"
#include "ZelvoraAdapters/gtk/WebKit/UserContentController.h"
#include "ZelvoraAdapters/gtk/WebKit/WebView.h"
#include "ZelvoraAdapters/gtk/os/Logger.h"

#include <utility>

namespace zelvora::gtk {

namespace {

std::filesystem::path dataDirectoryFor(HostOptions const& options)
{
    return options.dataDirectory.empty() ? dataDirectory(options.bundleIdentifier) : options.dataDirectory;
}

std::filesystem::path cacheDirectoryFor(HostOptions const& options, std::filesystem::path const& dataDirectory)
{
    if (!options.dataDirectory.empty())
        return dataDirectory / "cache";
    return std::filesystem::path(g_get_user_cache_dir()) / dataDirectory.filename();
}

std::string preferencesFile(std::filesystem::path const& dataDirectory)
{
    // Where there is no folder the journal says that it cannot write.
    (void)ensureDataDirectory(dataDirectory);
    return dataDirectory / "preferences.journal";
}

// As GLib has it: to the journal where standard error leads there, else to standard error.
void warn(std::string const& line)
{
    g_log("Zelvora", G_LOG_LEVEL_WARNING, "%s", line.c_str());
}

URLSession::Options urlSessionOptions(HostOptions const& options)
{
    if (options.certificateAuthorityFile.empty())
        return {};
    return { options.certificateAuthorityFile };
}

}

Platform::Platform(HostOptions options)
    : m_options(std::move(options))
    , m_dataDirectory(dataDirectoryFor(m_options))
    , m_mainBundle(m_options.bundleIdentifier)
    , m_userDefaults(preferencesFile(m_dataDirectory), warn)
    , m_urlSession(urlSessionOptions(m_options))
    , m_trackingStore(m_dataDirectory)
    , m_trackingManager(m_trackingStore, m_options.appName)
    , m_identifierManager(m_trackingStore)
    , m_application(m_notificationCenter, [this] { m_globalQueue.async([this] { synchronizeUserDefaults(); }); })
{
}

std::unique_ptr<platform::Logger> Platform::makeLogger(std::string const& subsystem, std::string const& category)
{
    return std::make_unique<Logger>(subsystem, category);
}

std::unique_ptr<platform::UIView::Peer> Platform::makeViewPeer(platform::UIView& owner, platform::CGRect frame)
{
    return std::make_unique<UIViewPeer>(owner, frame);
}

std::unique_ptr<platform::UIViewController::Peer> Platform::makeViewControllerPeer(platform::UIViewController& owner)
{
    return std::make_unique<UIViewControllerPeer>(owner);
}

std::shared_ptr<platform::WKUserContentController> Platform::makeUserContentController()
{
    return std::make_shared<UserContentController>();
}

std::shared_ptr<platform::WKWebView> Platform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    return std::make_shared<WebView>(frame, configuration, websiteSession());
}

void Platform::animate(platform::TimeInterval duration, std::function<void()> const& animations)
{
    runAnimated(duration, animations);
}

WebsiteSession& Platform::websiteSession()
{
    if (!m_websiteSession) {
        m_websiteSession.emplace(m_dataDirectory, cacheDirectoryFor(m_options, m_dataDirectory),
            m_options.certificateAuthorityFile, m_options.trustedCertificates);
    }
    return *m_websiteSession;
}

}
