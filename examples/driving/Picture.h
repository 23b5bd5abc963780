#pragma once

#include <gtk/gtk.h>

#include <filesystem>

namespace zelvora::examples {

/// Draws the window as it is shown now, page included, into a PNG file. Turns the main loop until the window has drawn
/// what is new. False where the window is not shown or the file cannot be written.
[[nodiscard]] bool takePicture(GtkWindow* window, std::filesystem::path const& file);

}
