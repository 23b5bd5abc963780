#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// Captures what the process writes to standard output during its lifetime. One at a time.
class StandardOutput final {
public:
    StandardOutput();
    ~StandardOutput();
    StandardOutput(StandardOutput const&) = delete;
    StandardOutput& operator=(StandardOutput const&) = delete;

    /// Everything written so far.
    [[nodiscard]] std::string text() const;
    /// The same, split into lines.
    [[nodiscard]] std::vector<std::string> lines() const;

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Close> m_file;
    int m_original = -1;
};

}
