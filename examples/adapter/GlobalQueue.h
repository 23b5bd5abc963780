#pragma once

#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"

namespace zelvora::abacus {

using GlobalQueue = shared::ThreadPoolQueue;

}
