#include "tests/support/gtk/JournalDouble.h"

#include "ZelvoraContract/support/Record.h"

#include <cerrno>
#include <memory>

namespace zelvora::tests {

namespace {

std::unique_ptr<Record<JournalDouble::Entry>> s_record;

}

JournalDouble::JournalDouble()
{
    s_record = std::make_unique<Record<Entry>>();
}

std::vector<JournalDouble::Entry> JournalDouble::entries() const
{
    return s_record->all();
}

int JournalDouble::send(iovec const* fields, int count)
{
    Entry entry;
    for (int i = 0; i < count; ++i) {
        std::string const field(static_cast<char const*>(fields[i].iov_base), fields[i].iov_len);
        auto const equals = field.find('=');
        entry.emplace(field.substr(0, equals), field.substr(equals + 1));
    }
    s_record->add(std::move(entry));
    return 0;
}

int JournalDouble::sendToNobody(iovec const*, int)
{
    return -ENOENT;
}

}
