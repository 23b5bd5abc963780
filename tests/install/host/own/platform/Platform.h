#pragma once

// A header of the host. The package must not pick it up.
#error "platform/Platform.h of the host was included"
