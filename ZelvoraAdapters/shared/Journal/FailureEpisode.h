#pragma once

#include <string>

namespace zelvora::shared {

/// Tells the first of a run of equal failures from those that follow, so that a full disk is one line in the log.
class FailureEpisode final {
public:
    /// Whether this is news.
    [[nodiscard]] bool begins(std::string const& reason)
    {
        if (reason == m_reason)
            return false;
        m_reason = reason;
        return true;
    }
    void end()
    {
        if (!m_reason.empty())
            m_reason.clear();
    }

private:
    std::string m_reason;
};

}
