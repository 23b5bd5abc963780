#pragma once

#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Value.h"
#include "tests/simulation/Random.h"

#include <string>

namespace zelvora::simulation {

/// What a page posts to the bridge: any of its messages, right or wrong. An event in it has the number `event`.
[[nodiscard]] platform::Value makeMessage(Random& random, int event);
[[nodiscard]] platform::Dictionary makeEvent(Random& random, int number);
/// Anything that a page can store.
[[nodiscard]] platform::Value makeValue(Random& random, int depth = 3);
[[nodiscard]] std::string makeText(Random& random);
[[nodiscard]] std::string makeKey(Random& random);
[[nodiscard]] double makeLifetime(Random& random);

}
