#pragma once

#include <sys/uio.h>

#include <map>
#include <string>
#include <vector>

namespace zelvora::tests {

/// What the journal daemon would have been sent, an entry's fields by their names. One per process, as its sender is
/// a plain function.
class JournalDouble final {
public:
    using Entry = std::map<std::string, std::string>;

    JournalDouble();

    [[nodiscard]] std::vector<Entry> entries() const;
    /// Takes the place of libsystemd's function of that meaning.
    static int send(iovec const* fields, int count);
    /// Answers as libsystemd does where no journal runs.
    static int sendToNobody(iovec const* fields, int count);
};

}
