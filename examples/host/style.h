#pragma once

#include <string>

namespace zelvora::examples {

/// Installs the style sheet of the app's widgets. The app is light or dark as the system asks, or always "light" or
/// "dark". After `gtk_init`.
void installStyle(std::string const& appearance);

}
