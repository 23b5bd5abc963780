#pragma once

#include "examples/service/Handles.h"

#include <libsoup/soup.h>

#include <filesystem>
#include <string>

namespace zelvora::examples {

struct Answer {
    unsigned status = 0; ///< 0 when no answer came at all.
    std::string contentType;
    std::string body;
    std::string error; ///< Why the answer did not come, or not whole.
};

/// A client that trusts one authority, or only the system's when none is given. It waits for every answer.
class ServiceClient {
public:
    ServiceClient();
    explicit ServiceClient(std::filesystem::path const& authority);

    Answer get(std::string const& address);
    Answer post(std::string const& address, std::string const& body, char const* contentType = "application/json");
    Answer send(char const* method, std::string const& address);
    /// Asks for exactly this path, which a client would tidy up if it were part of an address; gives the status line.
    std::string statusOfPath(std::string const& address, std::string const& path);

private:
    Answer answerTo(SoupMessage* message);

    ObjectPointer<SoupSession> m_session;
};

} // namespace zelvora::examples
