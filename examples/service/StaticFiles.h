#pragma once

#include "examples/service/Http.h"

#include <filesystem>
#include <string_view>

namespace zelvora::examples {

/// The files below one directory, read afresh at every request so that a page can be edited while it is shown.
class StaticFiles {
public:
    explicit StaticFiles(std::filesystem::path directory);

    /// `path` is relative to the directory; a path that leads out of it is refused.
    Reply read(std::string_view path) const;

private:
    std::filesystem::path m_directory;
};

} // namespace zelvora::examples
