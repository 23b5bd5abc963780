#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "tests/simulation/Random.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace zelvora::simulation {

/// The real file system, where chosen calls fail until they are healed. Nothing is synced, because no power cut
/// follows. Any thread.
class FaultyFiles final : public shared::FileOperations {
public:
    /// Makes calls fail, of one kind or of several, each with an error that such a call can have.
    void breakSome(Random& random);
    void heal() { m_broken = 0; }
    [[nodiscard]] bool areBroken() const { return m_broken != 0; }

    // shared::FileOperations
    int open(std::string const& path, int flags, ::mode_t mode) override;
    ::ssize_t write(int file, char const* bytes, std::size_t count, ::off_t offset) override;
    int truncate(int file, ::off_t size) override;
    int sync(int file) override;
    int rename(std::string const& from, std::string const& to) override;

private:
    enum class Call : std::uint8_t { Open = 1, Write = 2, Truncate = 4, Sync = 8, Rename = 16 };

    [[nodiscard]] bool fails(Call call) const;

    std::atomic<unsigned> m_broken = 0;
    std::atomic<int> m_error = 0;
    // How many bytes the next failing write still writes.
    std::atomic<std::size_t> m_allowed = 0;
};

}
