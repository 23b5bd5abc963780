#include "examples/host/describe.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <algorithm>

namespace zelvora::examples {

namespace {

using platform::Value;

std::string orEmpty(char const* text)
{
    return text ? text : "";
}

std::string shortText(Value const& value)
{
    if (auto const* array = value.array())
        return "[" + std::to_string(array->size()) + "]";
    if (auto const* dictionary = value.dictionary())
        return "{" + std::to_string(dictionary->size()) + "}";
    return description(value);
}

}

Description describeAddress(std::string const& url)
{
    gtk::GUriPointer const uri(g_uri_parse(url.c_str(), G_URI_FLAGS_NONE, nullptr));
    if (!uri)
        return { .name = url, .details = {} };
    auto query = orEmpty(g_uri_get_query(uri.get()));
    std::ranges::replace(query, '&', ' ');
    return { .name = orEmpty(g_uri_get_path(uri.get())), .details = query };
}

Description describeEvent(Value const& event)
{
    Description described;
    auto const* const members = event.dictionary();
    if (!members)
        return { .name = shortText(event), .details = {} };
    for (auto const& [name, value] : *members) {
        if (name == "eventId")
            described.name = shortText(value);
        else if (!value.isNull() && shortText(value) != "")
            described.details += (described.details.empty() ? "" : " · ") + name + " " + shortText(value);
    }
    return described;
}

}
