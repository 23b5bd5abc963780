#pragma once

#include "examples/service/Http.h"

#include <filesystem>

namespace zelvora::examples {

class CollectorStore;

/// The collector: takes batches of events, and shows them to programs and, as a page, to people.
[[nodiscard]] Reply answerCollector(CollectorStore& store, std::filesystem::path const& pages, Request const& request);

}
