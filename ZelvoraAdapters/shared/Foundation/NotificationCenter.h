#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/NotificationCenter.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace zelvora::shared {

/// The notification centre of adapters whose system has none. Any thread.
class ZELVORA_API NotificationCenter final : public platform::NotificationCenter {
public:
    /// The number of registrations for a name, without those whose observer was destroyed.
    [[nodiscard]] std::size_t observerCount(std::string const& name) const;

    // platform::NotificationCenter
    void post(platform::Notification notification) override;
    void addObserver(std::shared_ptr<void const> const& observer, std::string name, Handler handler) override;
    void removeObserver(void const* observer) override;
    [[nodiscard]] Token addObserver(std::string name, platform::DispatchQueue& queue, Handler handler) override;
    void removeObserver(Token token) override;

private:
    struct Registration;
    using Registrations = std::vector<std::shared_ptr<Registration>>;

    void add(std::shared_ptr<Registration> registration);
    template<typename Predicate>
    void remove(Predicate predicate);

    std::mutex mutable m_mutex;
    Registrations m_registrations;
    Token m_lastToken = 0;
};

}
