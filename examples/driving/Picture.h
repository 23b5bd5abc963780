#pragma once

#include <gtk/gtk.h>

#include <filesystem>

namespace zelvora::examples {

/// Saves the window's current contents, pages included, as a PNG file. Runs the main loop until recent changes are
/// drawn. False if the window is not shown or the file cannot be written.
[[nodiscard]] bool takePicture(GtkWindow* window, std::filesystem::path const& file);

}
