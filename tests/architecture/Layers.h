#pragma once

#include "tests/architecture/Violation.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace zelvora::architecture {

struct Survey {
    std::vector<Violation> violations;
    /// The number of sources read per layer; a layer is named by its folder ("ZelvoraPlatform",
    /// "ZelvoraAdapters/memory").
    std::map<std::string, int> sourcesRead;
};

/// Reads every source of the layers under `tree` and checks their order: ZelvoraPlatform includes itself and the
/// standard library; ZelvoraIOS these and itself; an adapter includes ZelvoraPlatform, itself, ZelvoraAdapters/shared
/// and the system; the contract suites include ZelvoraPlatform, ZelvoraAdapters/memory and themselves. All C++ code is
/// in the namespace `zelvora`; only C declarations may be outside.
[[nodiscard]] Survey surveyLayers(std::filesystem::path const& tree);

}
