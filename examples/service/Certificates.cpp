#include "examples/service/Certificates.h"

#include "examples/service/X509.h"

#include <fcntl.h>
#include <gnutls/crypto.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace zelvora::examples {

namespace {

constexpr std::time_t s_day = 24L * 60 * 60;
constexpr std::time_t s_lifetime = 365 * s_day;

std::string readFile(std::filesystem::path const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

bool writeAll(int file, std::string_view text)
{
    while (!text.empty()) {
        auto const written = ::write(file, text.data(), text.size());
        if (written < 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// The file appears whole or not at all, and only its owner reads it.
bool writeFile(std::filesystem::path const& file, std::string_view text)
{
    auto const unfinished = file.string() + ".new";
    ::unlink(unfinished.c_str());
    auto const descriptor = ::open(unfinished.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
        return false;
    auto const written = writeAll(descriptor, text);
    ::close(descriptor);
    return written && std::rename(unfinished.c_str(), file.c_str()) == 0;
}

bool isGood(Certificates const& files, std::vector<std::string> const& hostNames)
{
    auto const authority = x509::readCertificate(readFile(files.authority));
    auto const server = x509::readCertificate(readFile(files.server));
    auto const key = x509::readKey(readFile(files.serverKey));
    if (!authority || !server || !key)
        return false;

    auto const tomorrow = std::time(nullptr) + s_day;
    return x509::isValidAt(*authority, tomorrow) && x509::isValidAt(*server, tomorrow)
        && x509::isSignedBy(*server, *authority) && x509::belongsTo(*server, *key)
        && std::ranges::all_of(hostNames, [&server](std::string const& name) { return x509::isFor(*server, name); });
}

bool make(Certificates const& files, std::vector<std::string> const& hostNames)
{
    auto const authorityKey = x509::makeKey();
    auto const serverKey = x509::makeKey();
    auto const authority = x509::makeAuthority(authorityKey, "Zelvora example authority", s_lifetime);
    auto const server = x509::makeServer(serverKey, hostNames, s_lifetime, authority, authorityKey);
    return writeFile(files.serverKey, x509::text(serverKey)) && writeFile(files.server, x509::text(server))
        && writeFile(files.authority, x509::text(authority));
}

} // namespace

std::expected<Certificates, std::string> prepareCertificates(
    std::filesystem::path const& directory, std::vector<std::string> const& hostNames)
{
    Certificates files {
        .authority = directory / "ca.pem", .server = directory / "server.pem", .serverKey = directory / "server-key.pem"
    };
    if (isGood(files, hostNames))
        return files;
    if (!make(files, hostNames) || !isGood(files, hostNames))
        return std::unexpected("cannot make certificates in " + directory.string());
    return files;
}

} // namespace zelvora::examples
