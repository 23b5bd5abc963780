#pragma once

#include "ZelvoraPlatform/Foundation/UserDefaults.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace zelvora::abacus {

/// Preferences of one launch.
class UserDefaults final : public platform::UserDefaults {
public:
    // platform::UserDefaults
    [[nodiscard]] std::optional<platform::Value> object(std::string const& key) override
    {
        std::scoped_lock const lock(m_mutex);
        auto const found = m_values.find(key);
        return found == m_values.end() ? std::nullopt : std::optional(found->second);
    }
    void setObject(std::optional<platform::Value> value, std::string const& key) override
    {
        std::scoped_lock const lock(m_mutex);
        m_values.erase(key);
        if (value)
            m_values.emplace(key, *std::move(value));
    }
    void setDouble(double number, std::string const& key) override { setObject(number, key); }
    void removeObject(std::string const& key) override { setObject(std::nullopt, key); }

private:
    std::mutex m_mutex;
    std::map<std::string, platform::Value> m_values;
};

}
