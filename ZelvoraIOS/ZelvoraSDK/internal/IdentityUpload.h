#pragma once

#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <expected>

namespace zelvora::internal {

/// Posts the identity keys (user key, API key, advertising id, package name) to the API base URL and keeps the shop id
/// of the answer. Nothing in the SDK calls it yet.
class IdentityUpload final {
public:
    explicit IdentityUpload(GuardedProperties& properties) : m_properties(properties) { }

    /// Any thread. The answer is handled on the loader's queue; failures are silent except for an answer that is not
    /// JSON.
    void sendData();

private:
    void acceptIdentity(std::expected<platform::URLSession::Answer, platform::Error> const& result);

    GuardedProperties& m_properties;
};

}
