#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <string>

namespace zelvora::gtk {

/// Parses an HTTP or HTTPS URL with a host; empty if the text is not one.
[[nodiscard]] GUriPointer parseHTTPUri(std::string const& text);

/// Resolves a reference in a response from `base`; empty if the result is not such a URL.
[[nodiscard]] GUriPointer resolveHTTPUri(GUri& base, std::string const& reference);

[[nodiscard]] bool isSecure(GUri& uri);

}
