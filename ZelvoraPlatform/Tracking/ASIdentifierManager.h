#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string>

namespace zelvora::platform {

/// The advertising identifier of the device. Any thread.
class ZELVORA_API ASIdentifierManager {
public:
    virtual ~ASIdentifierManager() = default;

    /// An upper-case UUID; all zeros where the system gives none away.
    [[nodiscard]] virtual std::string advertisingIdentifier() const = 0;
};

}
