#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/GLib/Timer.h"

#include <gio/gio.h>

#include <filesystem>
#include <functional>
#include <map>

namespace zelvora::developer {

/// Tells when a file below a folder has changed, once for changes that follow one another quickly. Hidden folders,
/// "node_modules" and one more folder, which need not exist, are left out. Main thread.
class FolderWatch final {
public:
    FolderWatch(std::filesystem::path const& folder, std::filesystem::path const& leftOut,
        std::function<void()> const& onChange);
    FolderWatch(FolderWatch const&) = delete;
    FolderWatch& operator=(FolderWatch const&) = delete;
    ~FolderWatch();

private:
    void watch(std::filesystem::path const& folder);
    void watchBelow(std::filesystem::path const& folder);
    [[nodiscard]] bool isLeftOut(std::filesystem::path const& folder) const;
    void didChange(GFile* file, GFileMonitorEvent event);

    std::filesystem::path m_leftOut;
    gtk::Timer m_timer;
    std::map<std::filesystem::path, gtk::GObjectPointer<GFileMonitor>> m_monitors;
};

}
