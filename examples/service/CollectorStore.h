#pragma once

#include "examples/service/Database.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::examples {

/// One upload as it came: its events are JSON texts exactly as the sender wrote them, in its order.
struct CollectedBatch {
    std::int64_t number = 0;
    std::string receivedAt;
    std::string profile;
    std::vector<std::string> events = {};
};

/// What the tracking collector received, kept in a file. May be used from any thread.
class CollectorStore {
public:
    static std::expected<CollectorStore, std::string> open(std::filesystem::path const& file);

    /// Keeps all of the batch or none of it; false when it could not be kept.
    bool add(std::string_view profile, std::vector<std::string> const& events);
    bool clear();
    std::vector<CollectedBatch> batches() const;

private:
    explicit CollectorStore(Database database);
    bool insert(std::string_view profile, std::vector<std::string> const& events);

    std::unique_ptr<std::mutex> m_mutex = std::make_unique<std::mutex>();
    mutable Database m_database;
};

} // namespace zelvora::examples
