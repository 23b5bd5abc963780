#include "ZelvoraAdapters/uikit/Foundation/UserDefaults.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"

#include <utility>

namespace zelvora::uikit {

UserDefaults::UserDefaults() : m_defaults([NSUserDefaults standardUserDefaults]) { }

std::optional<platform::Value> UserDefaults::object(std::string const& key)
{
    @autoreleasepool {
        NSString* name = stringOf(key);
        if (!name)
            return std::nullopt;
        std::scoped_lock const lock(m_mutex);
        return valueOf([m_defaults objectForKey:name], Nulls::Reserved);
    }
}

void UserDefaults::setObject(std::optional<platform::Value> value, std::string const& key)
{
    if (!value) {
        removeObject(key);
        return;
    }
    @autoreleasepool {
        NSString* name = stringOf(key);
        id const object = value->isNull() ? nil : objectOf(*value, Nulls::Reserved);
        if (!name || !object)
            return;
        std::scoped_lock const lock(m_mutex);
        // The store may keep what it has if that is equal, as 1 is to true and 0 to -0.
        if ([[m_defaults objectForKey:name] isEqual:object])
            [m_defaults removeObjectForKey:name];
        [m_defaults setObject:object forKey:name];
    }
}

void UserDefaults::setDouble(double number, std::string const& key)
{
    setObject(number, key);
}

void UserDefaults::removeObject(std::string const& key)
{
    @autoreleasepool {
        NSString* name = stringOf(key);
        if (!name)
            return;
        std::scoped_lock const lock(m_mutex);
        [m_defaults removeObjectForKey:name];
    }
}

}
