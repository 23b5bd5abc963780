#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <webkit/webkit.h>

#include <cstdint>
#include <string>

namespace zelvora::examples {

/// What a host wants to know about the pages of a web view. The SDK does not observe whether they load, so a host that
/// cares asks the engine itself.
class LoadWatcher {
public:
    /// What is in the web view after a load that failed.
    enum class PageBefore : std::uint8_t { Kept, Replaced };

    virtual ~LoadWatcher() = default;

    virtual void didStartLoad() { }
    /// Between 0 and 1.
    virtual void didProgress(double) { }
    /// The page replaces the one before it; the rest of it is still to come.
    virtual void didCommitLoad() { }
    /// The load ended, whether it failed or not.
    virtual void didFinishLoad() { }
    /// `reason` is a sentence for developers.
    virtual void didFailLoad(std::string const& url, std::string const& reason, PageBefore pageBefore) = 0;
};

/// Tells a watcher about an engine's loads for as long as it lives. Main thread.
class LoadWatch final {
public:
    /// The watcher outlives the watch.
    LoadWatch(WebKitWebView* engine, LoadWatcher& watcher);
    LoadWatch(LoadWatch const&) = delete;
    LoadWatch& operator=(LoadWatch const&) = delete;
    ~LoadWatch();

private:
    void loadDidChange(WebKitLoadEvent event);
    [[nodiscard]] bool loadDidFail(char const* url, GError const& error);
    void webProcessDidTerminate();
    [[nodiscard]] std::string url() const;

    gtk::GObjectPointer<WebKitWebView> m_engine;
    LoadWatcher& m_watcher;
};

}
