#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <string>

namespace zelvora::gtk {

/// The address of a host by HTTP or HTTPS; empty where the text is none.
[[nodiscard]] GUriPointer parseHTTPUri(std::string const& text);

/// Where a reference leads that stands in an answer from `base`; empty where it is not to such an address.
[[nodiscard]] GUriPointer resolveHTTPUri(GUri& base, std::string const& reference);

[[nodiscard]] bool isSecure(GUri& uri);

}
