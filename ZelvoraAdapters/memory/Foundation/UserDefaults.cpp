#include "ZelvoraAdapters/memory/Foundation/UserDefaults.h"

#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::memory {

UserDefaults::Contents UserDefaults::contents() const
{
    std::scoped_lock const lock(m_mutex);
    return m_contents;
}

void UserDefaults::setContents(Contents contents)
{
    std::scoped_lock const lock(m_mutex);
    m_contents = std::move(contents);
}

std::vector<std::string> UserDefaults::calls() const
{
    std::scoped_lock const lock(m_mutex);
    return m_calls;
}

void UserDefaults::clearCalls()
{
    std::scoped_lock const lock(m_mutex);
    m_calls.clear();
}

std::optional<platform::Value> UserDefaults::object(std::string const& key)
{
    std::scoped_lock const lock(m_mutex);
    auto const found = m_contents.find(key);
    return found == m_contents.end() ? std::nullopt : std::optional(found->second);
}

void UserDefaults::setObject(std::optional<platform::Value> value, std::string const& key)
{
    if (value && value->isNull())
        platform::fatalError("the preferences were given a bare null marker");
    if (value && value->nesting() > platform::Value::maximumNesting)
        platform::fatalError("the preferences were given a value that nests too deep");
    std::scoped_lock const lock(m_mutex);
    m_calls.push_back("setObject " + key);
    if (value)
        m_contents.insert_or_assign(key, *std::move(value));
    else
        m_contents.erase(key);
}

void UserDefaults::setDouble(double number, std::string const& key)
{
    std::scoped_lock const lock(m_mutex);
    m_calls.push_back("setDouble " + key);
    m_contents.insert_or_assign(key, number);
}

void UserDefaults::removeObject(std::string const& key)
{
    std::scoped_lock const lock(m_mutex);
    m_calls.push_back("removeObject " + key);
    m_contents.erase(key);
}

}
