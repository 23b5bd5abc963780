#pragma once

#include "ZelvoraPlatform/Export.h"

#include <string>

namespace zelvora {

/// Writes each message to the system log, as far as that is enabled for the type, and always to standard output. Any
/// thread.
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
    /// Warning: an error to the system log.
    static void w(std::string const& message);
    /// Critical: a fault to the system log.
    static void c(std::string const& message);
    /// Notice: default to the system log.
    static void n(std::string const& message);
    /// Trace: debug to the system log.
    static void t(std::string const& message);
    /// Fault.
    static void f(std::string const& message);
};

}
