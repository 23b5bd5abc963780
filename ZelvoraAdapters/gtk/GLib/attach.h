#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/Concurrency/Block.h"

#include <glib.h>

namespace zelvora::gtk {

/// Takes over a new source and attaches it to a main context; nullptr is the default one. The block is called whenever
/// the source is due, until the result is reset, which the block may do itself. The source owns the block.
[[nodiscard]] GSourcePointer attach(GSource* source, platform::Block<void()> call, GMainContext* context = nullptr);

/// Takes over a new source and attaches it to a main context; nullptr is the default one. The block is called once,
/// when the source is due, and is destroyed then, or when somebody else who has the source ends it.
void runLater(GSource* source, platform::Block<void()> work, GMainContext* context = nullptr);

}
