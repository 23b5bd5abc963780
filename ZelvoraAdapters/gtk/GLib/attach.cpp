#include "ZelvoraAdapters/gtk/GLib/attach.h"

#include <utility>

namespace zelvora::gtk {

namespace {

using Call = platform::Block<void()>;

// GLib keeps the block until it has returned, even if the source is ended meanwhile.
template<gboolean remains>
gboolean dispatch(gpointer call)
{
    (*static_cast<Call*>(call))();
    return remains;
}

void start(GSource* source, GSourceFunc dispatch, Call call, GMainContext* context)
{
    auto const release = [](gpointer held) { delete static_cast<Call*>(held); };
    g_source_set_callback(source, dispatch, new Call(std::move(call)), release);
    g_source_attach(source, context);
}

}

GSourcePointer attach(GSource* source, Call call, GMainContext* context)
{
    start(source, dispatch<G_SOURCE_CONTINUE>, std::move(call), context);
    return GSourcePointer(source);
}

void runLater(GSource* source, Call work, GMainContext* context)
{
    start(source, dispatch<G_SOURCE_REMOVE>, std::move(work), context);
    g_source_unref(source);
}

}
