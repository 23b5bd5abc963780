#include "examples/developer/FolderWatch.h"

#include <string>

namespace zelvora::developer {

namespace {

// A build writes several files.
constexpr double quiet = 0.15;

// As the system names the files that have changed.
std::filesystem::path asChangesName(std::filesystem::path const& folder)
{
    auto const normal = std::filesystem::absolute(folder).lexically_normal();
    return normal.has_filename() ? normal : normal.parent_path();
}

}

FolderWatch::FolderWatch(
    std::filesystem::path const& folder, std::filesystem::path const& leftOut, std::function<void()> const& onChange)
    : m_leftOut(asChangesName(leftOut))
    , m_timer([onChange] { onChange(); })
{
    watch(asChangesName(folder));
    watchBelow(asChangesName(folder));
}

FolderWatch::~FolderWatch()
{
    for (auto const& [folder, monitor] : m_monitors)
        g_signal_handlers_disconnect_by_data(monitor.get(), this);
}

bool FolderWatch::isLeftOut(std::filesystem::path const& folder) const
{
    auto const name = folder.filename().string();
    return name.starts_with('.') || name == "node_modules" || folder == m_leftOut;
}

void FolderWatch::watch(std::filesystem::path const& folder)
{
    auto const file = gtk::adopt(g_file_new_for_path(folder.c_str()));
    auto monitor = gtk::adopt(g_file_monitor_directory(file.get(), G_FILE_MONITOR_WATCH_MOVES, nullptr, nullptr));
    if (!monitor)
        return;
    g_file_monitor_set_rate_limit(monitor.get(), 0);
    g_signal_connect(monitor.get(), "changed",
        G_CALLBACK(+[](GFileMonitor*, GFile* changed, GFile*, GFileMonitorEvent event, FolderWatch* self) {
            self->didChange(changed, event);
        }),
        this);
    m_monitors.insert_or_assign(folder, std::move(monitor));
}

void FolderWatch::watchBelow(std::filesystem::path const& folder)
{
    std::error_code ignored;
    for (auto const& entry : std::filesystem::directory_iterator(folder, ignored)) {
        if (!entry.is_directory(ignored) || entry.is_symlink(ignored) || isLeftOut(entry.path()))
            continue;
        watch(entry.path());
        watchBelow(entry.path());
    }
}

void FolderWatch::didChange(GFile* file, GFileMonitorEvent event)
{
    gtk::GTextPointer const text(g_file_get_path(file));
    std::filesystem::path const path(text ? text.get() : "");
    if (event == G_FILE_MONITOR_EVENT_ATTRIBUTE_CHANGED || isLeftOut(path))
        return;
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored) && !m_monitors.contains(path)) {
        watch(path);
        watchBelow(path);
    }
    m_timer.set(quiet);
}

}
