#include "ZelvoraAdapters/uikit/Foundation/NotificationCenter.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"

#include <optional>
#include <utility>

namespace zelvora::uikit {

namespace {

platform::Notification notificationOf(NSNotification* notification)
{
    auto const userInfo = valueOf(notification.userInfo);
    auto const* const dictionary = userInfo ? userInfo->dictionary() : nullptr;
    return { textOf(notification.name), dictionary ? std::optional(*dictionary) : std::nullopt };
}

}

NotificationCenter::NotificationCenter() : m_observers([NSMutableDictionary dictionaryWithCapacity:0]) { }

NotificationCenter::~NotificationCenter()
{
    for (id name in m_observers) {
        if (id const observer = [m_observers objectForKey:name])
            [[NSNotificationCenter defaultCenter] removeObserver:observer];
    }
}

void NotificationCenter::post(platform::Notification notification)
{
    @autoreleasepool {
        NSString* name = stringOf(notification.name);
        if (!name)
            return;
        NSDictionary* userInfo = notification.userInfo ? objectOf(*notification.userInfo) : nil;
        [[NSNotificationCenter defaultCenter] postNotificationName:name object:nil userInfo:userInfo];
    }
}

void NotificationCenter::addObserver(std::shared_ptr<void const> const& observer, std::string name, Handler handler)
{
    observe(name);
    m_handlers->addObserver(observer, std::move(name), std::move(handler));
}

void NotificationCenter::removeObserver(void const* observer)
{
    m_handlers->removeObserver(observer);
}

NotificationCenter::Token NotificationCenter::addObserver(
    std::string name, platform::DispatchQueue& queue, Handler handler)
{
    observe(name);
    return m_handlers->addObserver(std::move(name), queue, std::move(handler));
}

void NotificationCenter::removeObserver(Token token)
{
    m_handlers->removeObserver(token);
}

void NotificationCenter::observe(std::string const& name)
{
    @autoreleasepool {
        NSString* key = stringOf(name);
        if (!key)
            return;
        std::scoped_lock const lock(m_mutex);
        if ([m_observers objectForKey:key])
            return;
        auto const handlers = m_handlers;
        id const observer = [[NSNotificationCenter defaultCenter]
            addObserverForName:key
                        object:nil
                         queue:nil
                    usingBlock:^(NSNotification* notification) { handlers->post(notificationOf(notification)); }];
        [m_observers setObject:observer forKey:key];
    }
}

}
