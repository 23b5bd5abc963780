#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"

#include "ZelvoraPlatform/Concurrency/DispatchQueue.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <utility>

namespace zelvora::shared {

struct NotificationCenter::Registration {
    [[nodiscard]] bool isLive() const { return queue || !observer.expired(); }

    std::string name;
    Handler handler;
    // Either an observer object, or a queue and a token.
    std::weak_ptr<void const> observer {};
    platform::DispatchQueue* queue = nullptr;
    // What `removeObserver` identifies the registration by. The address is never dereferenced.
    void const* observerAddress = nullptr;
    Token token = 0;
    std::atomic<bool> removed = false;
};

std::size_t NotificationCenter::observerCount(std::string const& name) const
{
    std::scoped_lock const lock(m_mutex);
    return static_cast<std::size_t>(std::ranges::count_if(m_registrations,
        [&name](auto const& registration) { return registration->name == name && registration->isLive(); }));
}

void NotificationCenter::post(platform::Notification notification)
{
    Registrations receivers;
    {
        std::scoped_lock const lock(m_mutex);
        std::ranges::copy_if(m_registrations, std::back_inserter(receivers),
            [&notification](auto const& registration) { return registration->name == notification.name; });
    }
    for (auto const& registration : receivers) {
        if (registration->queue) {
            registration->queue->async([registration, notification] {
                if (!registration->removed)
                    registration->handler(notification);
            });
        } else if (auto const observer = registration->observer.lock(); observer && !registration->removed)
            registration->handler(notification);
    }
}

void NotificationCenter::addObserver(std::shared_ptr<void const> const& observer, std::string name, Handler handler)
{
    auto registration = std::make_shared<Registration>(std::move(name), std::move(handler), observer);
    registration->observerAddress = observer.get();
    add(std::move(registration));
}

void NotificationCenter::removeObserver(void const* observer)
{
    remove([observer](Registration const& registration) {
        return !registration.queue && registration.observerAddress == observer;
    });
}

NotificationCenter::Token NotificationCenter::addObserver(
    std::string name, platform::DispatchQueue& queue, Handler handler)
{
    auto registration = std::make_shared<Registration>(std::move(name), std::move(handler));
    registration->queue = &queue;
    std::scoped_lock const lock(m_mutex);
    registration->token = ++m_lastToken;
    m_registrations.push_back(registration);
    return registration->token;
}

void NotificationCenter::removeObserver(Token token)
{
    remove([token](Registration const& registration) { return registration.queue && registration.token == token; });
}

void NotificationCenter::add(std::shared_ptr<Registration> registration)
{
    // Observers may be destroyed without being removed: drop them here, or the list would grow without bound.
    remove([](Registration const& other) { return !other.isLive(); });
    std::scoped_lock const lock(m_mutex);
    m_registrations.push_back(std::move(registration));
}

template<typename Predicate>
void NotificationCenter::remove(Predicate predicate)
{
    // Destroyed after the lock is released: destroying what a handler captured may call this object.
    Registrations removed;
    std::scoped_lock const lock(m_mutex);
    std::erase_if(m_registrations, [&predicate, &removed](auto const& registration) {
        if (!predicate(*registration))
            return false;
        registration->removed = true;
        removed.push_back(registration);
        return true;
    });
}

}
