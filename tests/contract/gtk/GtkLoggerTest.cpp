#include "ZelvoraAdapters/gtk/os/Logger.h"
#include "ZelvoraContract/LoggerContract.h"
#include "tests/support/gtk/JournalDouble.h"

#include <glib.h>

namespace zelvora::tests {

namespace {

class GtkJournal final {
public:
    GtkJournal() { setDebugEnabled(false); }

    std::unique_ptr<platform::Logger> makeLogger(std::string const& subsystem, std::string const& category)
    {
        return std::make_unique<gtk::Logger>(subsystem, category, JournalDouble::send);
    }
    std::vector<LogEntry> entries()
    {
        // The journal's priorities are those of syslog(3).
        static std::map<std::string, platform::OSLogType> const types {
            { "2", platform::OSLogType::Fault },
            { "3", platform::OSLogType::Error },
            { "5", platform::OSLogType::Default },
            { "6", platform::OSLogType::Info },
            { "7", platform::OSLogType::Debug },
        };
        std::vector<LogEntry> entries;
        for (auto const& entry : m_journal.entries())
            entries.push_back({ types.at(entry.at("PRIORITY")), entry.at("MESSAGE") });
        return entries;
    }
    void setDebugEnabled(bool enabled)
    {
        if (enabled)
            g_setenv("G_MESSAGES_DEBUG", "all", TRUE);
        else
            g_unsetenv("G_MESSAGES_DEBUG");
    }
    std::string kept(std::string const& message) { return message; }

private:
    JournalDouble m_journal;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, LoggerContract, GtkJournal);

}
