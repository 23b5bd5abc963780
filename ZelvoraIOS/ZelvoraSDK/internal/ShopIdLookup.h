#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"
#include "ZelvoraPlatform/Concurrency/Task.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <expected>
#include <string>

namespace zelvora::internal {

/// Finds the shop id that belongs to an API key: the stored one, or else the service's answer.
class ShopIdLookup final {
public:
    explicit ShopIdLookup(GuardedProperties& properties) : m_properties(properties) { }

    /// Sets `shopId`, or leaves it unchanged and reports the failure to the host. Ends on the global queue if it made a
    /// request, else on the thread that awaited it.
    platform::Task<void> fetchShopId(std::string apiKey);

private:
    static platform::Task<std::expected<platform::URLSession::Answer, platform::Error>> performRequest(
        platform::URLRequest request);
    void acceptLookup(platform::URLSession::Answer const& answer);
    void fail(std::string const& detail);

    GuardedProperties& m_properties;
};

}
