#pragma once

#include <string>
#include <vector>

namespace zelvora::bench {

/// Runs this program in a new process with these arguments, and waits for it. If it fails, this process ends with a
/// message.
void runAgain(std::vector<std::string> arguments);

}
