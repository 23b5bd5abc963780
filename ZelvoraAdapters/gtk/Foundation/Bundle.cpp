#include "ZelvoraAdapters/gtk/Foundation/Bundle.h"

#include "ZelvoraPlatform/fatalError.h"

#include <gio/gio.h>

#include <utility>

namespace zelvora::gtk {

Bundle::Bundle(std::optional<std::string> applicationId) : m_applicationId(std::move(applicationId))
{
    // Text with a NUL is longer than what GLib looks at.
    auto const isId = !m_applicationId
        || (g_application_id_is_valid(m_applicationId->c_str()) && m_applicationId->find('\0') == std::string::npos);
    if (!isId)
        platform::fatalError("the bundle identifier \"" + *m_applicationId
            + R"(" is not an application id, such as "com.example.shop")");
}

std::optional<std::string> Bundle::bundleIdentifier() const
{
    return m_applicationId;
}

}
