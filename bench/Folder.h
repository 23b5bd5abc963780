#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace zelvora::bench {

/// A temporary folder that is gone with the object.
struct Folder {
    Folder() : path(std::filesystem::temp_directory_path() / ("zelvora-bench-" + std::to_string(getpid())))
    {
        std::filesystem::create_directories(path);
    }
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::filesystem::path path;
};

}
