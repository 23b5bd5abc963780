#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace zelvora::memory {

/// Preferences that live as long as this object. Any thread.
///
/// What the interface forbids its callers (a bare null marker, a value that nests too deep) stops the process, so that
/// a test finds it.
class ZELVORA_API UserDefaults final : public platform::UserDefaults {
public:
    /// The values under their keys.
    using Contents = std::map<std::string, platform::Value>;

    /// A copy of all that is stored.
    [[nodiscard]] Contents contents() const;
    /// Replaces the contents, as with what an earlier launch left. Not one of the `calls`.
    void setContents(Contents contents);

    /// The calls that change something, in order: "setObject KEY" (also with an absent value), "setDouble KEY",
    /// "removeObject KEY".
    [[nodiscard]] std::vector<std::string> calls() const;
    /// Forgets the calls so far. What they stored stays.
    void clearCalls();

    // platform::UserDefaults
    [[nodiscard]] std::optional<platform::Value> object(std::string const& key) override;
    /// Replaces the value under the key; an absent value removes the entry. What the interface forbids stops the
    /// process.
    void setObject(std::optional<platform::Value> value, std::string const& key) override;
    void setDouble(double number, std::string const& key) override;
    void removeObject(std::string const& key) override;

private:
    std::mutex mutable m_mutex;
    Contents m_contents;
    std::vector<std::string> m_calls;
};

}
