#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string>

namespace zelvora::platform {

/// The shortest decimal text that reads back as the same number, in every locale; a whole number below 10^15 has
/// neither a point nor an exponent. "nan", "inf" and "-inf" for what is not finite.
[[nodiscard]] ZELVORA_API std::string numberText(double number);

}
