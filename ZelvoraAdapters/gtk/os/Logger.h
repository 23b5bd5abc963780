#pragma once

#include "ZelvoraPlatform/os/Logger.h"

#include <sys/uio.h>

#include <string>

namespace zelvora::gtk {

/// Sends entries to the journal daemon. Their identifier is the subsystem, so that `journalctl -t SUBSYSTEM` shows
/// them; the fields SUBSYSTEM and CATEGORY are set too. Without a journal daemon, entries are dropped.
///
/// Debug entries are off unless the environment variable G_MESSAGES_DEBUG, which all GLib programs share, lists the
/// subsystem or "all". It is read when the logger is made.
class Logger final : public platform::Logger {
public:
    /// Sends one entry's fields, as libsystemd's `sd_journal_sendv` does.
    using Send = int (*)(iovec const* fields, int count);

    Logger(std::string const& subsystem, std::string const& category);
    Logger(std::string const& subsystem, std::string const& category, Send send);

    // platform::Logger
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const override;
    void log(platform::OSLogType type, std::string const& message) override;

private:
    std::string m_identifierField;
    std::string m_subsystemField;
    std::string m_categoryField;
    Send m_send;
    bool m_isDebugEnabled;
};

}
