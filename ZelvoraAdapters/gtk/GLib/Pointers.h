#pragma once

#include <glib-object.h>

#include <memory>

namespace zelvora::gtk {

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

/// Takes a reference of its own.
template<typename Type>
[[nodiscard]] GObjectPointer<Type> retain(Type* object)
{
    return GObjectPointer<Type>(static_cast<Type*>(g_object_ref(object)));
}

using GBytesPointer = std::unique_ptr<GBytes, Releasing<g_bytes_unref>>;
using GErrorPointer = std::unique_ptr<GError, Releasing<g_error_free>>;
using GKeyFilePointer = std::unique_ptr<GKeyFile, Releasing<g_key_file_unref>>;
using GMainContextPointer = std::unique_ptr<GMainContext, Releasing<g_main_context_unref>>;
using GMainLoopPointer = std::unique_ptr<GMainLoop, Releasing<g_main_loop_unref>>;
using GUriPointer = std::unique_ptr<GUri, Releasing<g_uri_unref>>;
/// Text or bytes that GLib allocated.
using GTextPointer = std::unique_ptr<char, Releasing<g_free>>;

/// Where a GLib call leaves its error: `GErrorPlace error; call(..., error.out()); if (error) ...`.
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
