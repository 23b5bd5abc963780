#pragma once

#include "ZelvoraContract/MemoryHarness.h"

namespace zelvora::tests {

using SkeletonScreen = MemoryHarness;

}
