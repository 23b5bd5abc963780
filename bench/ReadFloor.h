#pragma once

#include <filesystem>
#include <string>

namespace zelvora::bench {

/// The lower bound of what opening a file costs that has to be read: its bytes, read into memory that is there already.
class ReadFloor final {
public:
    explicit ReadFloor(std::filesystem::path file);

    void operator()();

private:
    std::filesystem::path m_file;
    std::string m_bytes;
};

}
