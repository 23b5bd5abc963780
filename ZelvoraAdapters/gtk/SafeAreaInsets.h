#pragma once

#include "ZelvoraAdapters/shared/Layout/SafeAreaInsets.h"

namespace zelvora::gtk {

using shared::SafeAreaInsets;

}
