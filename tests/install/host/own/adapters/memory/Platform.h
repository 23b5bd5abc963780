#pragma once

// A header of the host. The package must not pick it up.
#error "adapters/memory/Platform.h of the host was included"
