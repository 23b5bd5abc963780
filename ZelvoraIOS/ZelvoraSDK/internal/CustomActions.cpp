#include "ZelvoraIOS/ZelvoraSDK/internal/CustomActions.h"

#include <utility>
#include <vector>

namespace zelvora::internal {

void CustomActions::add(std::string const& functionName, ZelvoraSDK::CustomAction action)
{
    HostCallback<ZelvoraSDK::CustomAction> callback(std::move(action));
    std::scoped_lock const lock(m_mutex);
    auto const [entry, isNew] = m_table.try_emplace(functionName);
    if (isNew)
        m_names.reset();
    // Swapped, and declared before the lock, so that a replaced action is destroyed after the lock has been released.
    std::swap(entry->second, callback);
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
    std::scoped_lock const lock(m_mutex);
    if (m_names)
        return *m_names;
    std::vector<platform::Value> names;
    names.reserve(m_table.size());
    for (auto const& [name, action] : m_table)
        names.emplace_back(name);
    return m_names.emplace(std::move(names));
}

CustomActions::Table CustomActions::table() const
{
    std::scoped_lock const lock(m_mutex);
    return m_table;
}

}
