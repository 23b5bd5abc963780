#include "ZelvoraIOS/ZelvoraSDK/internal/CustomActions.h"

#include <utility>
#include <vector>

namespace zelvora::internal {

void CustomActions::add(std::string const& functionName, ZelvoraSDK::CustomAction action)
{
    HostCallback<ZelvoraSDK::CustomAction> callback(std::move(action));
    std::scoped_lock const lock(m_mutex);
    // Swapped, and declared before the lock, so that a replaced action is destroyed after the lock has been released.
    std::swap(m_table[functionName], callback);
}

ZelvoraSDK::CustomActions CustomActions::all() const
{
    ZelvoraSDK::CustomActions actions;
    for (auto const& [name, action] : table())
        actions.emplace_hint(actions.end(), name, action.function());
    return actions;
}

ZelvoraSDK::CustomAction CustomActions::find(std::string const& functionName) const
{
    HostCallback<ZelvoraSDK::CustomAction> found;
    {
        std::scoped_lock const lock(m_mutex);
        if (auto const entry = m_table.find(functionName); entry != m_table.end())
            found = entry->second;
    }
    return found.function();
}

platform::Array CustomActions::names() const
{
    std::vector<platform::Value> names;
    std::scoped_lock const lock(m_mutex);
    names.reserve(m_table.size());
    for (auto const& [name, action] : m_table)
        names.emplace_back(name);
    return platform::Array(std::move(names));
}

CustomActions::Table CustomActions::table() const
{
    std::scoped_lock const lock(m_mutex);
    return m_table;
}

}
