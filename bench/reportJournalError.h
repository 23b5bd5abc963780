#pragma once

#include <cstdio>
#include <string>

namespace zelvora::bench {

/// What the measured journals are given for their errors, of which there should be none.
inline void reportJournalError(std::string const& line)
{
    std::fprintf(stderr, "journal: %s\n", line.c_str());
}

}
