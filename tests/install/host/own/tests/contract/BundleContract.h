#pragma once

// A header of the host. The package must not pick it up.
#error "tests/contract/BundleContract.h of the host was included"
