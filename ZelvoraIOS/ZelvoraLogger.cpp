#include "ZelvoraIOS/ZelvoraLogger.h"

#include "ZelvoraIOS/internal/joined.h"
#include "ZelvoraPlatform/Platform.h"

#include <cstdio>

namespace zelvora {

namespace {

using platform::OSLogType;

platform::Logger& systemLogger()
{
    // Never destroyed: threads of the system may still log while the process ends.
    static auto* const s_logger =
        platform::Platform::current().makeLogger("com.zelvora.sdk.ios", "ZelvoraSDK").release();
    return *s_logger;
}

void write(OSLogType type, std::string const& message)
{
    auto& logger = systemLogger();
    if (logger.isEnabled(type))
        logger.log(type, message);

    // One call, so that lines of different threads do not interleave.
    auto const line = internal::joined({ "[ZelvoraSDK-debug] ", message, "\n" });
    std::fwrite(line.data(), 1, line.size(), stdout);
    // Flushed at once, because standard output to a pipe or a file is buffered and a crash would lose the buffer.
    std::fflush(stdout);
}

}

void ZelvoraLogger::d(std::string const& message)
{
    write(OSLogType::Debug, message);
}
void ZelvoraLogger::i(std::string const& message)
{
    write(OSLogType::Info, message);
}
void ZelvoraLogger::e(std::string const& message)
{
    write(OSLogType::Error, message);
}
void ZelvoraLogger::l(std::string const& message)
{
    write(OSLogType::Default, message);
}
void ZelvoraLogger::w(std::string const& message)
{
    write(OSLogType::Error, message);
}
void ZelvoraLogger::c(std::string const& message)
{
    write(OSLogType::Fault, message);
}
void ZelvoraLogger::n(std::string const& message)
{
    write(OSLogType::Default, message);
}
void ZelvoraLogger::t(std::string const& message)
{
    write(OSLogType::Debug, message);
}
void ZelvoraLogger::f(std::string const& message)
{
    write(OSLogType::Fault, message);
}

}
