#include "ZelvoraAdapters/gtk/GLib/ReadyTimeSource.h"

namespace zelvora::gtk {

namespace {

gboolean callBack(GSource*, GSourceFunc callback, gpointer data)
{
    return callback(data);
}

// The ready time alone decides where there is neither `prepare` nor `check`.
GSourceFuncs s_functions = { nullptr, nullptr, callBack, nullptr, nullptr, nullptr };

}

GSource* makeReadyTimeSource()
{
    return g_source_new(&s_functions, sizeof(GSource));
}

}
