#pragma once

#include <glib.h>

namespace zelvora::gtk {

/// A source that is dispatched only at its ready time, and never before one is set. The caller owns the reference
/// and attaches it.
[[nodiscard]] GSource* makeReadyTimeSource();

}
