#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"

#include "ZelvoraAdapters/gtk/Foundation/DataDirectory.h"
#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>

namespace zelvora::gtk {

using Status = platform::ATTrackingAuthorizationStatus;

namespace {

constexpr char const* group = "Tracking";
constexpr char const* statusKey = "Authorization";
constexpr char const* identifierKey = "AdvertisingIdentifier";

// Indexed by the raw value of the status.
constexpr std::array<char const*, 4> statusNames { "not-determined", "restricted", "denied", "authorized" };

char const* nameOf(Status status)
{
    return statusNames.at(static_cast<std::size_t>(status));
}

Status statusNamed(std::string_view name)
{
    auto const* const found = std::ranges::find(statusNames, name);
    return found == statusNames.end() ? Status::NotDetermined : static_cast<Status>(found - statusNames.begin());
}

std::string upperCase(char const* text)
{
    return GTextPointer(g_ascii_strup(text, -1)).get();
}

std::string readText(GKeyFile* file, char const* key)
{
    GTextPointer const text(g_key_file_get_string(file, group, key, nullptr));
    return text ? text.get() : "";
}

void warn(std::filesystem::path const& file, char const* doing, char const* reason)
{
    g_log("Zelvora", G_LOG_LEVEL_WARNING, "%s could not be %s: %s", file.c_str(), doing, reason);
}

}

TrackingStore::TrackingStore(std::filesystem::path const& dataDirectory) : m_file(dataDirectory / "tracking.ini")
{
    read();
}

Status TrackingStore::status() const
{
    std::scoped_lock const lock(m_mutex);
    return m_status;
}

void TrackingStore::setStatus(Status status)
{
    std::scoped_lock const lock(m_mutex);
    m_status = status;
    write();
}

std::string TrackingStore::identifier()
{
    std::scoped_lock const lock(m_mutex);
    if (!m_identifier) {
        m_identifier = upperCase(GTextPointer(g_uuid_string_random()).get());
        write();
    }
    return *m_identifier;
}

void TrackingStore::read()
{
    GKeyFilePointer const file(g_key_file_new());
    GErrorPlace error;
    if (!g_key_file_load_from_file(file.get(), m_file.c_str(), G_KEY_FILE_NONE, error.out())) {
        if (!g_error_matches(&*error, G_FILE_ERROR, G_FILE_ERROR_NOENT))
            warn(m_file, "read", error->message);
        return;
    }
    m_status = statusNamed(readText(file.get(), statusKey));
    if (std::string const text = readText(file.get(), identifierKey); g_uuid_string_is_valid(text.c_str()))
        m_identifier = upperCase(text.c_str());
}

void TrackingStore::write() const
{
    GKeyFilePointer const file(g_key_file_new());
    g_key_file_set_string(file.get(), group, statusKey, nameOf(m_status));
    if (m_identifier)
        g_key_file_set_string(file.get(), group, identifierKey, m_identifier->c_str());
    gsize length = 0;
    GTextPointer const text(g_key_file_to_data(file.get(), &length, nullptr));

    if (!ensureDataDirectory(m_file.parent_path())) {
        warn(m_file, "written", g_strerror(errno));
        return;
    }
    GErrorPlace error;
    constexpr int flags = G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE;
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): flags are joined.
    constexpr auto safely = static_cast<GFileSetContentsFlags>(flags);
    constexpr int forThisUserAlone = 0600;
    if (!g_file_set_contents_full(
            m_file.c_str(), text.get(), static_cast<gssize>(length), safely, forThisUserAlone, error.out()))
        warn(m_file, "written", error->message);
}

}
