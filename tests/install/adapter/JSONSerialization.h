#pragma once

#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"

namespace zelvora::abacus {

using JSONSerialization = shared::JSONSerialization;

}
