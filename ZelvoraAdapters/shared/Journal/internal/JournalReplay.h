#pragma once

#include "ZelvoraAdapters/shared/Journal/internal/EncodedArray.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalChange.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zelvora::shared {

/// Applies the records of a file to a table, one after another. Arrays that the file sets are kept encoded meanwhile;
/// the destructor puts them into the table. Until then, nobody else uses the table.
class JournalReplay final {
public:
    explicit JournalReplay(JournalTable& table) : m_table(table) { }
    ~JournalReplay();
    JournalReplay(JournalReplay const&) = delete;
    JournalReplay& operator=(JournalReplay const&) = delete;

    /// Applies the changes of a record. False, and none is applied, if the payload is not a sequence of complete
    /// changes or one of them is not applicable, such as one that extends a value that is not an array.
    [[nodiscard]] bool apply(std::string_view payload);

private:
    [[nodiscard]] JournalTable::Entry* find(std::string_view key);
    [[nodiscard]] bool isApplicable(JournalChange const& change);
    void applyChange(JournalChange const& change);
    void set(JournalChange const& change);
    void extend(JournalTable::Entry& entry, JournalChange const& change);
    void extend(EncodedArray& array, JournalChange const& change);

    JournalTable& m_table;
    /// By their entries, whose values are null markers until the arrays are put there.
    std::unordered_map<JournalTable::Entry*, EncodedArray> m_arrays;
    /// Both are reused, to allocate less.
    std::vector<JournalChange> m_changes;
    std::string m_key;
};

}
