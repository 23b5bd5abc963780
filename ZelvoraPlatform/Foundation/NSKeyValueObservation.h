#pragma once

#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// Ends its observation when it is invalidated or destroyed, whichever comes first. It may outlive what it observes.
/// Main thread.
class ZELVORA_API NSKeyValueObservation {
public:
    virtual ~NSKeyValueObservation() = default;

    virtual void invalidate() = 0;
};

}
