#include "adapters/gtk/Foundation/DataDirectory.h"

#include <glib.h>

namespace zelvora::gtk {

std::filesystem::path dataDirectory(std::optional<std::string> const& bundleIdentifier)
{
    char const* const program = g_get_prgname();
    std::string const name = bundleIdentifier.value_or(program ? program : "unnamed");
    // A relative $XDG_DATA_HOME counts as unset, as its specification says; GLib would take it.
    std::filesystem::path base = g_get_user_data_dir();
    if (base.is_relative())
        base = std::filesystem::path(g_get_home_dir()) / ".local" / "share";
    return base / name;
}

bool ensureDataDirectory(std::filesystem::path const& directory)
{
    return g_mkdir_with_parents(directory.c_str(), 0700) == 0;
}

}
