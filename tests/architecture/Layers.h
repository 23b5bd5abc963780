#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace zelvora::architecture {

/// A line that breaks the order of the layers.
struct Violation {
    /// From the top of the tree.
    std::string file;
    int line = 0;
    std::string reason;

    bool operator==(Violation const&) const = default;
};

struct Survey {
    std::vector<Violation> violations;
    /// How many sources were read, by the folder of the layer ("ZelvoraPlatform", "ZelvoraIOS",
    /// "ZelvoraAdapters/memory").
    std::map<std::string, int> sourcesRead;
};

/// Reads every source of the layers under `tree` and holds it against their order:
/// `platform` includes itself and the standard library; `ZelvoraIOS` these and itself; an adapter `platform`, itself,
/// `ZelvoraAdapters/shared` and the system. All that is C++ is in the namespace `zelvora`; C declarations may stand
/// outside.
[[nodiscard]] Survey surveyLayers(std::filesystem::path const& tree);

}
