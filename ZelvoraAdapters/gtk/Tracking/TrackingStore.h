#pragma once

#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

namespace zelvora::gtk {

/// Stores whether the user allows tracking, and the advertising identifier, in the file "tracking.ini" in the app's
/// data directory. Any thread.
///
/// A change is on disk when the call returns; the file is replaced atomically. If the file cannot be written, a warning
/// is logged and the change lasts until the process ends. Entries that cannot be parsed count as absent.
class TrackingStore final {
public:
    /// Reads the file. The directory need not exist.
    explicit TrackingStore(std::filesystem::path const& dataDirectory);

    [[nodiscard]] platform::ATTrackingAuthorizationStatus status() const;
    void setStatus(platform::ATTrackingAuthorizationStatus status);

    /// A random upper-case UUID, generated and stored by the first call.
    [[nodiscard]] std::string identifier();

private:
    void read();
    void write() const;

    std::filesystem::path m_file;
    mutable std::mutex m_mutex;
    platform::ATTrackingAuthorizationStatus m_status = platform::ATTrackingAuthorizationStatus::NotDetermined;
    std::optional<std::string> m_identifier;
};

}
