#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string>

namespace zelvora {

/// Writes each message to standard output and, if the system log is enabled for the message's type, to the system log.
/// Both happen before the call returns, also where standard output is a pipe or a file, so a crash loses no line.
/// Failures to write are ignored. Any thread.
class ZELVORA_API ZelvoraLogger final {
public:
    /// Debug.
    static void d(std::string const& message);
    /// Info.
    static void i(std::string const& message);
    /// Error.
    static void e(std::string const& message);
    /// Default.
    static void l(std::string const& message);
    /// Warning; the system log's type is error.
    static void w(std::string const& message);
    /// Critical; the system log's type is fault.
    static void c(std::string const& message);
    /// Notice; the system log's type is default.
    static void n(std::string const& message);
    /// Trace; the system log's type is debug.
    static void t(std::string const& message);
    /// Fault.
    static void f(std::string const& message);
};

}
