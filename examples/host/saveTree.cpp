#include "examples/host/saveTree.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"

#include <gio/gio.h>

namespace zelvora::examples {

bool saveTree(std::filesystem::path const& program, std::filesystem::path const& file)
{
    constexpr double patience = 20;
    auto const launcher = gtk::adopt(g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_NONE));
    g_subprocess_launcher_set_stdout_file_path(launcher.get(), file.c_str());
    auto const process = gtk::adopt(g_subprocess_launcher_spawn(launcher.get(), nullptr, program.c_str(), nullptr));
    if (!process)
        return false;
    auto hasEnded = false;
    auto const didEnd = [](GObject*, GAsyncResult*, gpointer ended) { *static_cast<bool*>(ended) = true; };
    g_subprocess_wait_async(process.get(), nullptr, didEnd, &hasEnded);
    auto const ends = [&hasEnded] { return hasEnded; };
    if (gtk::runMainLoopUntil(ends, patience))
        return g_subprocess_get_successful(process.get());
    g_subprocess_force_exit(process.get());
    (void)gtk::runMainLoopUntil(ends);
    return false;
}

}
