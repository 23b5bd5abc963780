#pragma once

#include "ZelvoraPlatform/ServiceAddresses.h"

namespace zelvora {

/// The platform's addresses of the service, or else those that are compiled in.
[[nodiscard]] platform::ServiceAddresses serviceAddresses();

}
