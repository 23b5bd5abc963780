#pragma once

#include "tests/contract/MemoryHarness.h"

namespace zelvora::tests {

using SkeletonScreen = MemoryHarness;

}
