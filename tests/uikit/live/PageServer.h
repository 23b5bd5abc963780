#pragma once

#include "ZelvoraContract/support/ReceivedRequest.h"

#include <memory>
#include <string>
#include <vector>

namespace zelvora::tests {

/// Serves pages on loopback, from a thread of its own. Apart, as the server's headers and Objective-C have names in
/// common.
class PageServer final {
public:
    PageServer();
    PageServer(PageServer const&) = delete;
    PageServer& operator=(PageServer const&) = delete;
    ~PageServer();

    /// Serves a page at a path and returns its address.
    std::string serve(std::string const& path, std::string const& html);
    /// The address of a page that never comes.
    std::string serveNothing(std::string const& path);
    std::vector<ReceivedRequest> received() const;

private:
    class Server;

    std::unique_ptr<Server> m_server;
};

}
