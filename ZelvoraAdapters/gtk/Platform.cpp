#include "ZelvoraAdapters/gtk/Platform.h"

#include "ZelvoraAdapters/gtk/Concurrency/DispatchQueue.h"
#include "ZelvoraAdapters/gtk/Foundation/Bundle.h"
#include "ZelvoraAdapters/gtk/Foundation/Clock.h"
#include "ZelvoraAdapters/gtk/Foundation/DataDirectory.h"
#include "ZelvoraAdapters/gtk/Foundation/URLSession.h"
#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/Tracking/ASIdentifierManager.h"
#include "ZelvoraAdapters/gtk/Tracking/ATTrackingManager.h"
#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"
#include "ZelvoraAdapters/gtk/UIKit/UIApplication.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/ViewAnimation.h"
#include "ZelvoraAdapters/gtk/WebKit/UserContentController.h"
#include "ZelvoraAdapters/gtk/WebKit/ViewAhead.h"
#include "ZelvoraAdapters/gtk/WebKit/WebView.h"
#include "ZelvoraAdapters/gtk/WebKit/WebsiteSession.h"
#include "ZelvoraAdapters/gtk/os/Logger.h"
#include "ZelvoraAdapters/gtk/os/MemoryWarning.h"
#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"
#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"
#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "ZelvoraPlatform/fatalError.h"

#include <cstdlib>
#include <filesystem>
#include <thread>
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
    // Without a folder the journal logs that it cannot write.
    (void)ensureDataDirectory(dataDirectory);
    return dataDirectory / "preferences.journal";
}

// A host starts no later because of a long queue: the SDK reads the preferences on a thread of its own.
shared::JournalOptions preferencesOptions()
{
    shared::JournalOptions options;
    options.opening = shared::JournalOpening::InBackground;
    return options;
}

// GLib writes it to the system's journal if standard error leads there, and to standard error otherwise.
void warn(std::string const& line)
{
    g_log("Zelvora", G_LOG_LEVEL_WARNING, "%s", line.c_str());
}

bool isReadable(std::filesystem::path const& certificate, std::string const& option)
{
    GErrorPlace error;
    auto const read = adopt(g_tls_certificate_new_from_file(certificate.c_str(), error.out()));
    if (!read)
        warn("HostOptions::" + option + ": " + certificate.string()
            + " could not be read, so the servers that it is for are not trusted: " + error->message);
    return read != nullptr;
}

// Otherwise the first sign would be a request that fails, and its error would not name the file.
HostOptions withReadableCertificates(HostOptions options)
{
    auto& authority = options.certificateAuthorityFile;
    if (!authority.empty() && !isReadable(authority, "certificateAuthorityFile"))
        authority.clear();
    std::erase_if(options.trustedCertificates,
        [](auto const& trusted) { return !isReadable(trusted.file, "trustedCertificates, " + trusted.host); });
    return options;
}

// The loader asks for these on its own thread. If it did so first while the process exits, their modules would set up
// the type system a second time, and that stops the process with a message.
void loadNetworkModules()
{
    g_tls_backend_get_default();
    g_proxy_resolver_get_default();
    g_network_monitor_get_default();
}

// Reset by the destructor.
Platform* s_current = nullptr;

URLSession::Options urlSessionOptions(HostOptions const& options)
{
    if (options.certificateAuthorityFile.empty())
        return {};
    return { options.certificateAuthorityFile };
}

}

struct Platform::Services {
    explicit Services(HostOptions hostOptions)
        : options(withReadableCertificates(std::move(hostOptions)))
        , directory(dataDirectoryFor(options))
        , mainBundle(options.bundleIdentifier)
        , userDefaults(preferencesFile(directory), warn, preferencesOptions())
        , urlSession(urlSessionOptions(options))
        , trackingStore(directory)
        , trackingManager(trackingStore, options.appName)
        , identifierManager(trackingStore)
        , application(notificationCenter, [this] { didResignActive(); })
    {
    }

    void prewarm()
    {
        if (!memoryWarning)
            memoryWarning.emplace([this] { viewAhead.reset(); });
        if (!viewAhead)
            viewAhead = makeViewAhead(websites());
    }

    void didResignActive()
    {
        viewAhead.reset();
        globalQueue.async([this] { userDefaults.synchronize(); });
    }

    WebsiteSession& websites()
    {
        if (!websiteSession) {
            websiteSession.emplace(directory, cacheDirectoryFor(options, directory), options.certificateAuthorityFile,
                options.trustedCertificates);
        }
        return *websiteSession;
    }

    std::thread::id mainThread = std::this_thread::get_id();
    HostOptions options;
    std::filesystem::path directory;
    Bundle mainBundle;
    Clock clock;
    shared::JournaledUserDefaults userDefaults;
    shared::NotificationCenter notificationCenter;
    shared::JSONSerialization jsonSerialization;
    DispatchQueue mainQueue;
    shared::ThreadPoolQueue globalQueue;
    URLSession urlSession;
    TrackingStore trackingStore;
    ATTrackingManager trackingManager;
    ASIdentifierManager identifierManager;
    UIApplication application;
    // Made with the first web view, because it starts processes.
    std::optional<WebsiteSession> websiteSession;
    // Until it is taken or its memory is needed.
    GObjectPointer<WebKitWebView> viewAhead;
    std::optional<MemoryWarning> memoryWarning;
};

Platform::Platform(HostOptions options)
{
    if (!gtk_is_initialized())
        platform::fatalError("gtk::Platform was made before gtk_init");
    if (s_current)
        platform::fatalError("gtk::Platform was made twice");
    loadNetworkModules();
    m_services = std::make_unique<Services>(std::move(options));
    s_current = this;
    // An installed platform is never destroyed.
    [[maybe_unused]] static int const registration = std::atexit([] {
        if (s_current)
            s_current->synchronizeUserDefaults();
    });
}

Platform::~Platform()
{
    s_current = nullptr;
}

Platform& Platform::current()
{
    if (!s_current)
        platform::fatalError("there is no gtk::Platform: call gtk::install first");
    return *s_current;
}

SafeAreaInsets const& Platform::safeAreaInsets() const
{
    return m_services->options.safeAreaInsets;
}

void Platform::prewarm()
{
    m_services->prewarm();
}

void Platform::synchronizeUserDefaults()
{
    m_services->userDefaults.synchronize();
}

std::optional<platform::ServiceAddresses> Platform::serviceAddresses() const
{
    return m_services->options.serviceAddresses;
}

bool Platform::isMainThread() const
{
    return std::this_thread::get_id() == m_services->mainThread;
}

void Platform::complain(std::string const& sentence)
{
    warn(sentence);
}

platform::Bundle& Platform::mainBundle()
{
    return m_services->mainBundle;
}

platform::Clock& Platform::clock()
{
    return m_services->clock;
}

platform::UserDefaults& Platform::standardUserDefaults()
{
    return m_services->userDefaults;
}

platform::NotificationCenter& Platform::notificationCenter()
{
    return m_services->notificationCenter;
}

platform::URLSession& Platform::urlSession()
{
    return m_services->urlSession;
}

platform::JSONSerialization& Platform::jsonSerialization()
{
    return m_services->jsonSerialization;
}

platform::DispatchQueue& Platform::mainQueue()
{
    return m_services->mainQueue;
}

platform::DispatchQueue& Platform::globalQueue()
{
    return m_services->globalQueue;
}

platform::ATTrackingManager& Platform::trackingManager()
{
    return m_services->trackingManager;
}

platform::ASIdentifierManager& Platform::identifierManager()
{
    return m_services->identifierManager;
}

platform::UIApplication& Platform::application()
{
    return m_services->application;
}

std::unique_ptr<platform::Logger> Platform::makeLogger(std::string const& subsystem, std::string const& category)
{
    return std::make_unique<Logger>(subsystem, category);
}

std::unique_ptr<platform::UIView::Peer> Platform::makeViewPeer(
    platform::UIView& owner, platform::CGRect frame, std::optional<std::string_view>)
{
    return std::make_unique<UIViewPeer>(owner, frame);
}

std::unique_ptr<platform::UIViewController::Peer> Platform::makeViewControllerPeer(
    platform::UIViewController& owner, std::optional<std::string_view>)
{
    return std::make_unique<UIViewControllerPeer>(owner);
}

std::shared_ptr<platform::WKUserContentController> Platform::makeUserContentController()
{
    if (m_services->viewAhead)
        return std::make_shared<UserContentController>(std::move(m_services->viewAhead));
    return std::make_shared<UserContentController>();
}

std::shared_ptr<platform::WKWebView> Platform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    return std::make_shared<WebView>(frame, configuration, m_services->websites());
}

void Platform::animate(platform::TimeInterval duration, std::function<void()> const& animations)
{
    runAnimated(duration, animations);
}

}
