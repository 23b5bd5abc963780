#pragma once

#include <string>
#include <vector>

namespace zelvora::examples {

struct CollectedBatch;

enum class Language { Korean, English };

/// What the collector received as a page to read, the newest batch first.
std::string collectorPage(std::vector<CollectedBatch> const& batches, Language language);

} // namespace zelvora::examples
