#pragma once

#include "tests/architecture/Violation.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace zelvora::architecture {

/// Each test has a source tree of its own, which is empty at first.
class SourceTreeTest : public testing::Test {
protected:
    SourceTreeTest()
    {
        auto name = (std::filesystem::temp_directory_path() / "zelvora-tree-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            throw std::filesystem::filesystem_error(
                "No folder for the test", std::error_code(errno, std::generic_category()));
        m_tree = name;
    }
    ~SourceTreeTest() override { std::filesystem::remove_all(m_tree); }

    std::filesystem::path const& tree() const { return m_tree; }

    void write(std::string const& file, std::string const& source)
    {
        std::filesystem::create_directories((m_tree / file).parent_path());
        std::ofstream(m_tree / file) << source;
    }

    static std::vector<Violation> one(std::string file, int line, std::string reason)
    {
        return { { std::move(file), line, std::move(reason) } };
    }

private:
    std::filesystem::path m_tree;
};

}
