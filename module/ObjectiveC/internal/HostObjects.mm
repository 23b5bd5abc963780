#include "module/ObjectiveC/internal/HostObjects.h"

namespace zelvora::module {

GuardedHostObjects& GuardedHostObjects::shared()
{
    static auto* const s_shared = new GuardedHostObjects;
    return *s_shared;
}

}
