#include "ZelvoraPlatform/fatalError.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace zelvora::platform {

void fatalError(std::string_view message)
{
    std::string const line = "Fatal error: " + std::string(message) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
    std::abort();
}

}
