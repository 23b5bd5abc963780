#pragma once

#include "examples/service/Http.h"

#include <expected>
#include <filesystem>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

namespace zelvora::examples {

/// Whether these are what an upload has: a profile, dev or prd, and an array of objects.
[[nodiscard]] bool isBatch(Json const& profile, Json const& events);

/// The uploads that the collector took, also kept in a file with one line of JSON for each. Thread-safe.
class CollectorStore final {
public:
    /// Reads what an earlier service left in the file. A last line that is not complete is removed: that upload was
    /// never acknowledged. A file with a line that the store did not write is left as it is, and not used. On failure
    /// the text says why.
    [[nodiscard]] static std::expected<std::unique_ptr<CollectorStore>, std::string> open(std::filesystem::path file);

    /// Returns after the batch was written; if the process is killed then, the batch is not lost. False if it could not
    /// be written, and nothing of it is kept.
    [[nodiscard]] bool add(std::string const& profile, Json const& events);
    [[nodiscard]] bool clear();
    /// An array of objects with `number`, `receivedAt`, `profile` and `events`, in the order of arrival.
    [[nodiscard]] Json batches() const;

private:
    explicit CollectorStore(std::filesystem::path file);
    [[nodiscard]] bool readLines();

    std::filesystem::path m_file;
    mutable std::mutex m_mutex;
    Json m_batches = Json::array();
};

}
