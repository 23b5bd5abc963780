#pragma once

#include <gio/gio.h>

#include <string_view>

namespace zelvora::gtk {

/// Whether a certificate may be a server's: it names no purposes, or that of a server among them. The TLS backend
/// does not look. False if the certificate cannot be parsed.
[[nodiscard]] bool isForServers(GTlsCertificate& certificate);

/// The same of a certificate's DER encoding.
[[nodiscard]] bool isForServers(std::string_view der);

}
