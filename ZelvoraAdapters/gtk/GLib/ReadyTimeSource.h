#pragma once

#include <glib.h>

namespace zelvora::gtk {

/// A source that is dispatched only at its ready time, and never before one is set. The caller owns the reference,
/// gives it a callback and attaches it.
[[nodiscard]] GSource* makeReadyTimeSource();

}
