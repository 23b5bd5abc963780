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

/// Reads the sources of the libraries, the examples and the benchmarks under `tree` and checks what hosts can include:
/// the headers that are installed, which are all but those in folders named "internal" and those in the folders of
/// ZelvoraAdapters/gtk.
///
/// An installed header includes only installed ones of ours, and its classes are exported from shared libraries (see
/// "ZelvoraPlatform/Export.h"). Code outside a library includes only its installed headers. The headers of
/// ZelvoraAdapters/gtk/GLib are not installed, but for everybody in the tree. The tests may include everything.
[[nodiscard]] HeaderSurvey surveyPublicHeaders(std::filesystem::path const& tree);

}
