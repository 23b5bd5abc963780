#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"

#include <optional>
#include <string>
#include <utility>

namespace zelvora::memory {

/// Preferences that pass every call to others, their target. Derive from them to observe or change single calls, on a
/// `ForwardingPlatform`. Any thread.
class ZELVORA_API ForwardingUserDefaults : public platform::UserDefaults {
public:
    /// The target must outlive these.
    explicit ForwardingUserDefaults(platform::UserDefaults& target) : m_target(target) { }

    /// What the calls are passed to.
    [[nodiscard]] platform::UserDefaults& target() const { return m_target; }

    // platform::UserDefaults
    [[nodiscard]] std::optional<platform::Value> object(std::string const& key) override
    {
        return m_target.object(key);
    }
    /// Replaces the value under the key; an absent value removes the entry.
    void setObject(std::optional<platform::Value> value, std::string const& key) override
    {
        m_target.setObject(std::move(value), key);
    }
    void setDouble(double number, std::string const& key) override { m_target.setDouble(number, key); }
    void removeObject(std::string const& key) override { m_target.removeObject(key); }

private:
    platform::UserDefaults& m_target;
};

}
