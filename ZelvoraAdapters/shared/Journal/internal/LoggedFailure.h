#pragma once

#include <string>

namespace zelvora::shared {

/// Suppresses repeats of a failure, so that a full disk is one line in the log rather than one per write.
class LoggedFailure final {
public:
    /// Whether to log this failure: it is not the one seen last.
    [[nodiscard]] bool isNew(std::string const& reason)
    {
        if (reason == m_reason)
            return false;
        m_reason = reason;
        return true;
    }
    /// The operation succeeded: the next failure is new.
    void clear()
    {
        if (!m_reason.empty())
            m_reason.clear();
    }

private:
    std::string m_reason;
};

}
