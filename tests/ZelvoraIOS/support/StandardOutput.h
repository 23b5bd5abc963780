#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// Catches what the process writes to standard output while it lives. One at a time.
class StandardOutput final {
public:
    StandardOutput();
    ~StandardOutput();
    StandardOutput(StandardOutput const&) = delete;
    StandardOutput& operator=(StandardOutput const&) = delete;

    /// Everything written so far.
    [[nodiscard]] std::string text() const;
    /// The same by lines, without the line feeds.
    [[nodiscard]] std::vector<std::string> lines() const;

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Close> m_file;
    int m_original = -1;
};

}
