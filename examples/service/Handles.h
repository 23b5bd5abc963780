#pragma once

#include <gio/gio.h>

#include <memory>

namespace zelvora::examples {

struct ObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference to a GObject.
template<typename T>
using ObjectPointer = std::unique_ptr<T, ObjectUnref>;

/// Owns one more reference to an object that somebody else keeps as well.
template<typename T>
ObjectPointer<T> share(T* object)
{
    g_object_ref(object);
    return ObjectPointer<T>(object);
}

struct GlibFree {
    void operator()(gpointer memory) const { g_free(memory); }
};

/// Owns text that GLib allocated.
using GlibText = std::unique_ptr<char, GlibFree>;

struct ErrorFree {
    void operator()(GError* error) const { g_error_free(error); }
};

using ErrorPointer = std::unique_ptr<GError, ErrorFree>;

} // namespace zelvora::examples
