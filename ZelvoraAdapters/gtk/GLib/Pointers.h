#pragma once

#include <glib-object.h>

#include <memory>

namespace zelvora::gtk {

/// The deleter of a pointer to something that a C function releases: `std::unique_ptr<GskRenderNode,
/// Releasing<gsk_render_node_unref>>`.
template<auto release>
struct Releasing {
    template<typename Type>
    void operator()(Type* held) const
    {
        release(held);
    }
};

/// One reference to a GObject.
template<typename Type>
using GObjectPointer = std::unique_ptr<Type, Releasing<g_object_unref>>;

/// Takes over the caller's reference.
template<typename Type>
[[nodiscard]] GObjectPointer<Type> adopt(Type* object)
{
    return GObjectPointer<Type>(object);
}

/// Takes over the floating reference of a new object, or adds one to those of its owners.
template<typename Type>
[[nodiscard]] GObjectPointer<Type> sink(Type* object)
{
    return GObjectPointer<Type>(static_cast<Type*>(g_object_ref_sink(object)));
}

/// Adds a reference; the caller keeps its own.
template<typename Type>
[[nodiscard]] GObjectPointer<Type> retain(Type* object)
{
    return GObjectPointer<Type>(static_cast<Type*>(g_object_ref(object)));
}

using GBytesPointer = std::unique_ptr<GBytes, Releasing<g_bytes_unref>>;
using GKeyFilePointer = std::unique_ptr<GKeyFile, Releasing<g_key_file_unref>>;
using GMainContextPointer = std::unique_ptr<GMainContext, Releasing<g_main_context_unref>>;
using GMainLoopPointer = std::unique_ptr<GMainLoop, Releasing<g_main_loop_unref>>;
using GUriPointer = std::unique_ptr<GUri, Releasing<g_uri_unref>>;

/// Ends a source, so that it is not dispatched any more, and releases the caller's reference.
inline void endSource(GSource* source)
{
    g_source_destroy(source);
    g_source_unref(source);
}

/// A source that ends with its owner.
using GSourcePointer = std::unique_ptr<GSource, Releasing<endSource>>;
/// Text or bytes that the caller must give to g_free.
using GTextPointer = std::unique_ptr<char, Releasing<g_free>>;

/// Receives and owns the error of a GLib call: `GErrorPlace error; call(..., error.out()); if (error) ...`. One call
/// each.
class GErrorPlace final {
public:
    GErrorPlace() = default;
    GErrorPlace(GErrorPlace const&) = delete;
    GErrorPlace& operator=(GErrorPlace const&) = delete;
    ~GErrorPlace() { g_clear_error(&m_error); }

    [[nodiscard]] GError** out() { return &m_error; }
    explicit operator bool() const { return m_error; }
    GError const* operator->() const { return m_error; }
    GError const& operator*() const { return *m_error; }

private:
    GError* m_error = nullptr;
};

}
