#pragma once

// A header of the host. The package must not pick it up.
#error "tests/support/Record.h of the host was included"
