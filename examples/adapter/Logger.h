#pragma once

#include "ZelvoraPlatform/os/Logger.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace zelvora::abacus {

/// A line for each entry: the number of its type and the text. Debug entries are on if the user has set ABACUS_DEBUG.
class Logger final : public platform::Logger {
public:
    /// The stream must outlive the logger.
    Logger(std::string const& /*subsystem*/, std::string const& /*category*/, std::FILE* stream = stderr)
        : m_stream(stream)
        , m_isDebugEnabled(std::getenv("ABACUS_DEBUG") != nullptr)
    {
    }

    // platform::Logger
    [[nodiscard]] bool isEnabled(platform::OSLogType type) const override
    {
        return m_isDebugEnabled || type != platform::OSLogType::Debug;
    }
    void log(platform::OSLogType type, std::string const& message) override
    {
        auto line = std::to_string(static_cast<int>(type)) + " [ZelvoraSDK] " + message;
        // A line feed would end the entry.
        for (auto& byte : line)
            byte = byte == '\n' ? ' ' : byte;
        line += '\n';
        // One call, so that the entries of several threads do not mix.
        std::fwrite(line.data(), 1, line.size(), m_stream);
        std::fflush(m_stream);
    }

private:
    std::FILE* m_stream;
    bool m_isDebugEnabled;
};

}
