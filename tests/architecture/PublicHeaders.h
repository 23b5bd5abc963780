#pragma once

#include "tests/architecture/Violation.h"

#include <cstddef>
#include <filesystem>
#include <vector>

namespace zelvora::architecture {

struct HeaderSurvey {
    std::vector<Violation> violations;
    std::size_t publicHeaders = 0;
};

/// Reads the sources of the libraries, the examples and the benchmarks under `tree` and checks who includes which
/// header. Hosts get the headers that are installed: all headers of a library except those in folders named "internal";
/// of ZelvoraAdapters/gtk, only those at its top.
///
/// An installed header includes no header of ours that is not installed, and its classes are exported from shared
/// libraries (see "ZelvoraPlatform/Export.h"). Code outside a library includes only the library's installed headers.
/// The headers of ZelvoraAdapters/gtk/GLib are not installed, but all code in the tree may include them. The tests may
/// include everything.
[[nodiscard]] HeaderSurvey surveyPublicHeaders(std::filesystem::path const& tree);

}
