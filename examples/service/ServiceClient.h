#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <libsoup/soup.h>

#include <filesystem>
#include <string>

namespace zelvora::examples {

struct Answer {
    /// 0 if no answer came.
    unsigned status = 0;
    std::string contentType;
    std::string body;
    /// Why the answer is missing or not complete; empty if it is complete.
    std::string error;
};

/// A client that blocks until the answer is there. It follows no redirect.
class ServiceClient final {
public:
    /// Trusts this authority alone; without one, or if the file cannot be read, those that the system trusts.
    explicit ServiceClient(std::filesystem::path const& authority = {});

    Answer get(std::string const& address);
    Answer post(std::string const& address, std::string const& body, char const* contentType = "application/json");
    Answer send(char const* method, std::string const& address);
    Answer send(SoupMessage* message);

private:
    gtk::GObjectPointer<SoupSession> m_session;
};

}
