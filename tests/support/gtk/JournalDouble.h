#pragma once

#include <sys/uio.h>

#include <map>
#include <string>
#include <vector>

namespace zelvora::tests {

/// Records what would be sent to the journal daemon. There is one record per process, because libsystemd's sender is a
/// plain function; making another double empties it.
class JournalDouble final {
public:
    /// Field values by field names.
    using Entry = std::map<std::string, std::string>;

    JournalDouble();

    [[nodiscard]] std::vector<Entry> entries() const;
    /// Stands in for sd_journal_sendv.
    static int send(iovec const* fields, int count);
    /// Fails as sd_journal_sendv does if no journal runs.
    static int sendToNobody(iovec const* fields, int count);
};

}
