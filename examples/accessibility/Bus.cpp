#include "examples/accessibility/Bus.h"

#include <iostream>
#include <memory>

namespace zelvora::examples {

namespace {

constexpr char const* accessible = "org.a11y.atspi.Accessible";
constexpr char const* pagesPath = "/org/a11y/webkit/accessible";

gtk::GTextPointer addressOfBus()
{
    gtk::GErrorPlace failure;
    auto const session = gtk::adopt(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, failure.out()));
    if (!session) {
        std::cerr << failure->message << '\n';
        return nullptr;
    }
    gtk::GErrorPlace refusal;
    std::unique_ptr<GVariant, gtk::Releasing<g_variant_unref>> const answer(
        g_dbus_connection_call_sync(session.get(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
            nullptr, G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, refusal.out()));
    if (!answer) {
        std::cerr << refusal->message << '\n';
        return nullptr;
    }
    char* address = nullptr;
    g_variant_get(answer.get(), "(s)", &address);
    return gtk::GTextPointer(address);
}

}

std::optional<AccessibilityBus> AccessibilityBus::connect()
{
    auto const address = addressOfBus();
    if (!address)
        return std::nullopt;
    constexpr auto flags = static_cast<GDBusConnectionFlags>(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    gtk::GErrorPlace failure;
    auto* const connection =
        g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, failure.out());
    if (connection)
        return AccessibilityBus(connection);
    std::cerr << failure->message << '\n';
    return std::nullopt;
}

AccessibilityBus::Variant AccessibilityBus::call(
    Accessible const& callee, char const* interface, char const* method, GVariant* arguments) const
{
    constexpr int milliseconds = 3000;
    return Variant(g_dbus_connection_call_sync(m_connection.get(), callee.owner.c_str(), callee.path.c_str(), interface,
        method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, milliseconds, nullptr, nullptr));
}

std::vector<Accessible> AccessibilityBus::apps() const
{
    return children({ .owner = "org.a11y.atspi.Registry", .path = "/org/a11y/atspi/accessible/root" });
}

std::vector<Accessible> AccessibilityBus::pages() const
{
    std::vector<Accessible> found;
    auto const names =
        call({ .owner = "org.freedesktop.DBus", .path = "/org/freedesktop/DBus" }, "org.freedesktop.DBus", "ListNames");
    GVariantIter* iterator = nullptr;
    if (!names)
        return found;
    g_variant_get(names.get(), "(as)", &iterator);
    for (char const* owner = nullptr; g_variant_iter_next(iterator, "&s", &owner);) {
        if (*owner != ':' || owner == std::string(g_dbus_connection_get_unique_name(m_connection.get())))
            continue;
        auto const answer =
            call({ .owner = owner, .path = pagesPath }, "org.freedesktop.DBus.Introspectable", "Introspect");
        char const* text = nullptr;
        if (answer)
            g_variant_get(answer.get(), "(&s)", &text);
        auto* const node = text ? g_dbus_node_info_new_for_xml(text, nullptr) : nullptr;
        for (auto** child = node ? node->nodes : nullptr; child && *child; ++child)
            found.push_back({ .owner = owner, .path = std::string(pagesPath) + "/" + (*child)->path });
        if (node)
            g_dbus_node_info_unref(node);
    }
    g_variant_iter_free(iterator);
    return found;
}

std::vector<Accessible> AccessibilityBus::children(Accessible const& parent) const
{
    std::vector<Accessible> found;
    auto const answer = call(parent, accessible, "GetChildren");
    if (!answer)
        return found;
    GVariantIter* iterator = nullptr;
    g_variant_get(answer.get(), "(a(so))", &iterator);
    char const* owner = nullptr;
    char const* path = nullptr;
    while (g_variant_iter_next(iterator, "(&s&o)", &owner, &path))
        found.push_back({ .owner = owner, .path = path });
    g_variant_iter_free(iterator);
    return found;
}

unsigned AccessibilityBus::role(Accessible const& asked) const
{
    guint role = 0;
    if (auto const answer = call(asked, accessible, "GetRole"))
        g_variant_get(answer.get(), "(u)", &role);
    return role;
}

std::string AccessibilityBus::name(Accessible const& asked) const
{
    auto const answer =
        call(asked, "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", accessible, "Name"));
    if (!answer)
        return {};
    GVariant* held = nullptr;
    g_variant_get(answer.get(), "(v)", &held);
    Variant const value(held);
    return g_variant_is_of_type(held, G_VARIANT_TYPE_STRING) ? g_variant_get_string(held, nullptr) : "";
}

}
