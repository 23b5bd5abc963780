#pragma once

#import "module/ObjectiveC/ZelvoraSDK.h"
#include "module/ObjectiveC/internal/HostDelegate.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace zelvora::module {

/// What the host gave, as it gave it: a block cannot be had back from a callable of C++.
struct HostObjects {
    ZelvoraViewProvider headerViewProvider;
    ZelvoraViewProvider footerViewProvider;
    ZelvoraPageNavigationHandler onPageNavigation;
    std::shared_ptr<HostDelegate> delegate;
    std::map<std::string, ZelvoraCustomAction> customActions;
};

/// The objects behind one lock. Any thread.
class GuardedHostObjects final {
public:
    /// Never destroyed: threads of the system may still call in while the process ends.
    [[nodiscard]] static GuardedHostObjects& shared();

    template<typename Object>
    [[nodiscard]] Object get(Object HostObjects::* object)
    {
        std::scoped_lock const lock(m_mutex);
        return m_objects.*object;
    }

    /// Replaces an object and passes it on to the SDK in one step, so that both have the same one whichever threads set
    /// it. What was there is released after the lock, as its end may call the SDK. `pass` must not call the host.
    template<typename Object, typename Pass>
    void replace(Object HostObjects::* object, Object value, Pass const& pass)
    {
        std::scoped_lock const lock(m_mutex);
        std::swap(m_objects.*object, value);
        pass();
    }

    /// The same for one custom action.
    template<typename Pass>
    void replaceAction(std::string const& name, ZelvoraCustomAction action, Pass const& pass)
    {
        std::scoped_lock const lock(m_mutex);
        std::swap(m_objects.customActions[name], action);
        pass();
    }

private:
    std::mutex m_mutex;
    HostObjects m_objects;
};

}
