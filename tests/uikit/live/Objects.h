#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#import <Foundation/Foundation.h>

#include <string>

// What the phone's web view makes of a page's values. Not the adapter's own conversion, which is what is tested.
namespace zelvora::live {

[[nodiscard]] NSString* stringOf(std::string const& text);
[[nodiscard]] id objectOf(platform::Value const& value);

}
