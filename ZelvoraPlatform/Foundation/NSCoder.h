#pragma once

#include "ZelvoraPlatform/Export.h"

namespace zelvora::platform {

/// An archive that a view could be built from on the phone. The SDK's views are built in code only and refuse it.
class ZELVORA_API NSCoder {
public:
    virtual ~NSCoder() = default;
};

}
