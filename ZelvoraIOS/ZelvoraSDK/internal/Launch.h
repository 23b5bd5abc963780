#pragma once

#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/GuardedProperties.h"

#include <memory>

namespace zelvora::internal {

/// Opens the site full screen, or defers that until initialization has ended.
class Launch final {
public:
    explicit Launch(GuardedProperties& properties) : m_properties(properties) { }

    /// Any thread. The presentation is queued to the main queue and keeps the presenter alive until then.
    ZelvoraSDK::Result start(std::shared_ptr<platform::UIViewController> presenter);

private:
    GuardedProperties& m_properties;
};

}
