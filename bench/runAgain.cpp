#include "bench/runAgain.h"

#include <glib.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace zelvora::bench {

void runAgain(std::vector<std::string> arguments)
{
    auto program = "/proc/" + std::to_string(getpid()) + "/exe";
    std::vector<char*> words { program.data() };
    for (auto& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    int status = -1;
    if (g_spawn_sync(
            nullptr, words.data(), nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, nullptr, nullptr, &status, nullptr)
        && status == 0)
        return;
    std::fprintf(stderr, "The process for \"%s\" failed.\n", arguments.front().c_str());
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

}
