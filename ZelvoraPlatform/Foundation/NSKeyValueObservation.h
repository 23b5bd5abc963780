#pragma once

#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// An observation that ends when this object is invalidated or destroyed, whichever comes first. It may outlive what it
/// observes. Main thread.
class ZELVORA_API NSKeyValueObservation {
public:
    virtual ~NSKeyValueObservation() = default;

    /// The handler is not called again. A second call does nothing.
    virtual void invalidate() = 0;
};

}
