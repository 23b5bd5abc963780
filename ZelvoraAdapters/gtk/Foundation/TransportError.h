#pragma once

#include "ZelvoraPlatform/Foundation/Error.h"

#include <glib.h>

namespace zelvora::gtk {

/// An error as GLib, its TLS and libsoup report it: their domain, code and message, which they translate.
[[nodiscard]] platform::Error transportError(GError const& error);

/// What the loader itself has to report, in the words of those domains.
[[nodiscard]] platform::Error timedOutError();
[[nodiscard]] platform::Error cancelledError();
[[nodiscard]] platform::Error unsupportedURLError(std::string const& url);
[[nodiscard]] platform::Error tooManyRedirectsError();
[[nodiscard]] platform::Error insecureRedirectError();

}
