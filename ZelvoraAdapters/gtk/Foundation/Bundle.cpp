#include "ZelvoraAdapters/gtk/Foundation/Bundle.h"

#include <utility>

namespace zelvora::gtk {

Bundle::Bundle(std::optional<std::string> applicationId) : m_applicationId(std::move(applicationId)) { }

std::optional<std::string> Bundle::bundleIdentifier() const
{
    return m_applicationId;
}

}
