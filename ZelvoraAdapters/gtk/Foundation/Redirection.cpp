#include "ZelvoraAdapters/gtk/Foundation/Redirection.h"

#include <libsoup/soup.h>

namespace zelvora::gtk {

namespace {

bool keepsItsMethod(std::string const& method, unsigned status)
{
    if (status == SOUP_STATUS_TEMPORARY_REDIRECT || status == SOUP_STATUS_PERMANENT_REDIRECT)
        return true;
    if (status == SOUP_STATUS_SEE_OTHER)
        return method == "HEAD";
    return method != "POST";
}

}

std::optional<Redirection> redirection(std::string const& method, unsigned status, char const* location)
{
    switch (status) {
    case SOUP_STATUS_MOVED_PERMANENTLY:
    case SOUP_STATUS_FOUND:
    case SOUP_STATUS_SEE_OTHER:
    case SOUP_STATUS_TEMPORARY_REDIRECT:
    case SOUP_STATUS_PERMANENT_REDIRECT:
        break;
    default:
        return std::nullopt;
    }
    if (!location)
        return std::nullopt;
    return Redirection { .location = location, .becomesGet = !keepsItsMethod(method, status) };
}

}
