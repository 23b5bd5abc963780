#include "ZelvoraAdapters/gtk/Foundation/DataDirectory.h"

#include <glib.h>

namespace zelvora::gtk {

std::filesystem::path dataDirectory(std::optional<std::string> const& bundleIdentifier)
{
    char const* const program = g_get_prgname();
    std::string const name = bundleIdentifier.value_or(program ? program : "unnamed");
    // A relative $XDG_DATA_HOME must be ignored; GLib would use it.
    char const* const asked = g_getenv("XDG_DATA_HOME");
    std::filesystem::path const base = asked && g_path_is_absolute(asked)
        ? std::filesystem::path(asked)
        : std::filesystem::path(g_get_home_dir()) / ".local" / "share";
    return base / name;
}

bool ensureDataDirectory(std::filesystem::path const& directory)
{
    return g_mkdir_with_parents(directory.c_str(), 0700) == 0;
}

}
