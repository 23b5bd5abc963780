#pragma once

#include "ZelvoraPlatform/Foundation/URL.h"

#include <atomic>
#include <string>
#include <thread>

namespace zelvora::tests {

/// A server on loopback that answers the first request of each connection with the same bytes, which need not be HTTP.
/// It serves one connection at a time.
class RawServer final {
public:
    enum class Afterwards { Close, KeepOpen };

    RawServer(std::string bytes, Afterwards afterwards);
    RawServer(RawServer const&) = delete;
    RawServer& operator=(RawServer const&) = delete;
    ~RawServer();

    platform::URL url() const;

private:
    void run();
    void serve(int connection);

    std::string m_bytes;
    Afterwards m_afterwards;
    std::atomic<bool> m_isEnding = false;
    int m_listener = -1;
    int m_ending[2] = { -1, -1 };
    int m_port = 0;
    std::thread m_thread;
};

/// A URL of a closed port on loopback.
platform::URL urlOfNobody();

}
