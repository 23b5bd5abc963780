#include "ZelvoraAdapters/gtk/Foundation/CertificatePurpose.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace zelvora::gtk {

namespace {

using namespace std::string_view_literals;

constexpr std::uint8_t sequence = 0x30;
constexpr std::uint8_t objectIdentifier = 0x06;
constexpr std::uint8_t octetString = 0x04;
constexpr std::uint8_t extensionsTag = 0xA3;

constexpr auto extendedKeyUsage = "\x55\x1D\x25"sv;
constexpr auto anyPurpose = "\x55\x1D\x25\x00"sv;
constexpr auto serverPurpose = "\x2B\x06\x01\x05\x05\x07\x03\x01"sv;

struct Element {
    std::uint8_t tag = 0;
    std::string_view content;
};

/// Reads the elements of a DER encoding in order. Absent at the end, or from the first one on that is malformed.
class Elements final {
public:
    explicit Elements(std::string_view bytes) : m_rest(bytes) { }

    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }
    std::optional<Element> next()
    {
        if (m_rest.size() < 2)
            return std::nullopt;
        auto const tag = byteAt(0);
        std::size_t length = byteAt(1);
        std::size_t begin = 2;
        if (length >= 0x80U) {
            auto const count = length & 0x7FU;
            if (count == 0 || count > sizeof(std::uint32_t) || m_rest.size() < begin + count)
                return std::nullopt;
            length = 0;
            for (; begin < 2 + count; ++begin)
                length = (length << 8U) | byteAt(begin);
        }
        if (length > m_rest.size() - begin)
            return std::nullopt;
        auto const content = m_rest.substr(begin, length);
        m_rest.remove_prefix(begin + length);
        return Element { .tag = tag, .content = content };
    }
    /// Skips elements until one with this tag.
    std::optional<Element> next(std::uint8_t tag)
    {
        auto element = next();
        while (element && element->tag != tag)
            element = next();
        return element;
    }

private:
    [[nodiscard]] std::uint8_t byteAt(std::size_t index) const { return static_cast<std::uint8_t>(m_rest[index]); }

    std::string_view m_rest;
};

bool includesServers(std::string_view purposes)
{
    auto const list = Elements(purposes).next(sequence);
    if (!list)
        return false;
    Elements elements { list->content };
    while (auto const purpose = elements.next(objectIdentifier)) {
        if (purpose->content == serverPurpose || purpose->content == anyPurpose)
            return true;
    }
    return false;
}

// True for every other extension.
bool allowsServers(Element const& extension)
{
    Elements elements { extension.content };
    auto const name = elements.next(objectIdentifier);
    if (!name || name->content != extendedKeyUsage)
        return true;
    auto const value = elements.next(octetString);
    return value && includesServers(value->content);
}

}

bool isForServers(std::string_view der)
{
    auto const certificate = Elements(der).next(sequence);
    auto const signedPart = certificate ? Elements(certificate->content).next(sequence) : std::nullopt;
    if (!signedPart)
        return false;
    auto const tagged = Elements(signedPart->content).next(extensionsTag);
    // Certificates of the first version have none.
    if (!tagged)
        return true;
    auto const extensions = Elements(tagged->content).next(sequence);
    if (!extensions)
        return false;
    Elements elements { extensions->content };
    while (auto const extension = elements.next(sequence)) {
        if (!allowsServers(*extension))
            return false;
    }
    return elements.isAtEnd();
}

bool isForServers(GTlsCertificate& certificate)
{
    GByteArray* bytes = nullptr;
    g_object_get(&certificate, "certificate", &bytes, nullptr);
    if (!bytes)
        return false;
    std::unique_ptr<GByteArray, Releasing<g_byte_array_unref>> const held(bytes);
    return isForServers({ reinterpret_cast<char const*>(bytes->data), bytes->len });
}

}
