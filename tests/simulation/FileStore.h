#pragma once

#include "ZelvoraAdapters/memory/Foundation/UserDefaults.h"
#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"
#include "tests/simulation/FaultyFiles.h"
#include "tests/simulation/Past.h"
#include "tests/simulation/Random.h"

#include <optional>
#include <string>
#include <vector>

namespace zelvora::simulation {

/// Preferences in a journal whose file fails at times, and what the file must hold. A write that fails is kept in
/// memory and written with a later one: so after the app's death the file holds what the preferences were after the
/// last write that succeeded, or after one of those that failed since.
class FileStore final {
public:
    using Contents = memory::UserDefaults::Contents;

    /// Opens the journal of `past`, and puts into `past` what it holds.
    explicit FileStore(Past& past);

    [[nodiscard]] shared::JournaledUserDefaults& preferences() { return m_preferences; }
    /// What was wrong with the file.
    [[nodiscard]] std::optional<std::string> const& failure() const { return m_failure; }
    [[nodiscard]] Contents const& contents() const { return m_contents; }

    void breakOrHeal(Random random);
    void didWrite(std::string const& key);
    void leave(Past& past) const;

private:
    void writeFirst(Past const& past);
    void recover(Past& past);

    std::string m_path;
    FaultyFiles m_files;
    shared::JournaledUserDefaults m_preferences;
    std::optional<std::string> m_failure;
    Contents m_contents;
    std::vector<Contents> m_possible;
};

/// Whether both are absent or the same, bit by bit: what is no number is the same as itself.
[[nodiscard]] bool isSame(std::optional<platform::Value> const& first, std::optional<platform::Value> const& second);

}
