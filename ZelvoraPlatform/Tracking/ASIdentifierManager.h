#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string>

namespace zelvora::platform {

/// The advertising identifier of the device. Any thread.
class ZELVORA_API ASIdentifierManager {
public:
    virtual ~ASIdentifierManager() = default;

    /// An upper-case UUID; all zeros if the system withholds it.
    [[nodiscard]] virtual std::string advertisingIdentifier() const = 0;
};

}
