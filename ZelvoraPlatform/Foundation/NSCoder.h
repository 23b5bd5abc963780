#pragma once

#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// An archive from which the phone can build a view. The SDK's views are built in code only and refuse it.
class ZELVORA_API NSCoder {
public:
    virtual ~NSCoder() = default;
};

}
