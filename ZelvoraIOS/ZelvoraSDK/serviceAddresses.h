#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/ServiceAddresses.h"

namespace zelvora {

/// The platform's addresses of the service, or else those that are compiled in.
[[nodiscard]] ZELVORA_API platform::ServiceAddresses serviceAddresses();

}
