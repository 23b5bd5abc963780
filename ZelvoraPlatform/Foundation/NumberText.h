#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string>

namespace zelvora::platform {

/// The shortest decimal text that reads back as the same number, in every locale. A whole number below 10^15 has
/// neither a point nor an exponent. A number that is not finite is "nan", "inf" or "-inf".
[[nodiscard]] ZELVORA_API std::string numberText(double number);

}
