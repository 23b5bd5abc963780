#pragma once

#include "tests/architecture/Violation.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::architecture {

/// Each test has a source tree of its own, which is empty at first.
class SourceTreeTest : public testing::Test {
protected:
    std::filesystem::path const& tree() const { return m_tree.path(); }

    void write(std::string const& file, std::string const& source) { m_tree.write(file, source); }

    static std::vector<Violation> one(std::string file, int line, std::string reason)
    {
        return { { std::move(file), line, std::move(reason) } };
    }

private:
    tests::TemporaryDirectory m_tree;
};

}
