#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace zelvora::bench {

/// The lower bound of what storing bytes costs: one write(2) of them at the end of a file.
class WriteFloor final {
public:
    WriteFloor(std::filesystem::path const& file, std::size_t bytes);
    WriteFloor(WriteFloor const&) = delete;
    WriteFloor& operator=(WriteFloor const&) = delete;
    ~WriteFloor();

    void operator()() const;

private:
    int m_descriptor;
    std::string m_bytes;
};

}
