#pragma once

#include "ZelvoraPlatform/ServiceAddresses.h"

namespace zelvora::internal {

/// The addresses of the service: those that the platform provides, or else those that are compiled in. `Environment.h`
/// chooses between production and development.
[[nodiscard]] platform::ServiceAddresses serviceAddresses();

}
