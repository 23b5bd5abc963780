#pragma once

#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/HostCallback.h"
#include "ZelvoraPlatform/Foundation/Array.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace zelvora::internal {

/// The actions that the host registered for pages to call, by name. Names are compared exactly. Any thread.
class CustomActions final {
public:
    /// Replaces an action that is already registered under this name.
    void add(std::string const& functionName, ZelvoraSDK::CustomAction action);
    [[nodiscard]] ZelvoraSDK::CustomActions all() const;
    /// Empty if there is none under this name.
    [[nodiscard]] ZelvoraSDK::CustomAction find(std::string const& functionName) const;
    [[nodiscard]] platform::Array names() const;

private:
    using Table = std::map<std::string, HostCallback<ZelvoraSDK::CustomAction>>;

    [[nodiscard]] Table table() const;

    mutable std::mutex m_mutex;
    Table m_table;
    /// Made when first asked for and kept until an action is added, because every web view asks for it.
    mutable std::optional<platform::Array> m_names;
};

}
