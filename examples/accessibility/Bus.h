#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <gio/gio.h>

#include <optional>
#include <string>
#include <vector>

namespace zelvora::examples {

/// What a screen reader can ask about.
struct Accessible {
    std::string owner;
    std::string path;
};

/// The bus on which apps and the processes of web pages tell assistive technologies about themselves. Calls block; what
/// does not answer in time counts as empty.
class AccessibilityBus final {
public:
    /// Absent, with a line on standard error, if the session has none.
    [[nodiscard]] static std::optional<AccessibilityBus> connect();

    /// The apps that have registered.
    [[nodiscard]] std::vector<Accessible> apps() const;
    /// The pages of the engine. It does not always make them part of their app, so they are looked for by themselves.
    [[nodiscard]] std::vector<Accessible> pages() const;

    [[nodiscard]] std::vector<Accessible> children(Accessible const& parent) const;
    /// As the protocol numbers them.
    [[nodiscard]] unsigned role(Accessible const& accessible) const;
    [[nodiscard]] std::string name(Accessible const& accessible) const;

private:
    using Variant = std::unique_ptr<GVariant, gtk::Releasing<g_variant_unref>>;

    explicit AccessibilityBus(GDBusConnection* connection) : m_connection(gtk::adopt(connection)) { }
    Variant call(
        Accessible const& callee, char const* interface, char const* method, GVariant* arguments = nullptr) const;

    gtk::GObjectPointer<GDBusConnection> m_connection;
};

}
