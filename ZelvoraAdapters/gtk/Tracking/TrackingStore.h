#pragma once

#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

namespace zelvora::gtk {

/// The user's answer to the question whether the app may track, and the identifier it may then use: the file
/// "tracking.ini" in the app's data directory. Any thread.
///
/// A change is on the disk when the call returns, written beside and renamed. Where the file cannot be written the
/// change holds for this process and a warning is logged. What cannot be understood in the file counts as absent.
class TrackingStore final {
public:
    /// Reads the file. The directory need not exist.
    explicit TrackingStore(std::filesystem::path const& dataDirectory);

    [[nodiscard]] platform::ATTrackingAuthorizationStatus status() const;
    void setStatus(platform::ATTrackingAuthorizationStatus status);

    /// A random upper-case UUID, made and kept at the first call.
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
