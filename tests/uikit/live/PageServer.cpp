#include "tests/uikit/live/PageServer.h"

#include "tests/support/gtk/LoopbackServer.h"

namespace zelvora::tests {

class PageServer::Server final {
public:
    LoopbackServer loopback;
};

PageServer::PageServer() : m_server(std::make_unique<Server>()) { }

PageServer::~PageServer() = default;

std::string PageServer::serve(std::string const& path, std::string const& html)
{
    auto const url = m_server->loopback.serve(path, [html](SoupServerMessage* message) {
        soup_message_headers_replace(
            soup_server_message_get_response_headers(message), "Content-Type", "text/html; charset=utf-8");
        answer(message, 200, html);
    });
    return url.absoluteString();
}

std::string PageServer::serveNothing(std::string const& path)
{
    return m_server->loopback.serve(path, soup_server_message_pause).absoluteString();
}

std::vector<ReceivedRequest> PageServer::received() const
{
    return m_server->loopback.received();
}

}
