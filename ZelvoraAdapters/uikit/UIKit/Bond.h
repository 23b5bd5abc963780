#pragma once

#include "ZelvoraPlatform/UIKit/UIView.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#import <UIKit/UIKit.h>

#include <memory>
#include <mutex>
#include <variant>

/// What a native object knows of the SDK's object that it stands for. Kept by association with the native object.
@interface ZLVOwnerReference : NSObject {
@public
    // Reset by the owner's peer.
    std::variant<std::monostate, zelvora::platform::UIView*, zelvora::platform::UIViewController*> _owner;
    // The owner, once the native object keeps it.
    std::shared_ptr<void const> _kept;
}

/// The reference of a native object, made if it has none yet.
+ (ZLVOwnerReference*)of:(NSObject*)native;
/// The reference of a native object, or nil.
+ (ZLVOwnerReference*)existingOf:(NSObject*)native;

@end

namespace zelvora::uikit {

/// Guards what native objects and owners know of each other, because a host may start the SDK, or ask for its active
/// web view, on any thread. Recursive, because who lets go of a native object may end the bonds of others.
[[nodiscard]] std::unique_lock<std::recursive_mutex> lockBonds();

/// Binds an owner, the SDK's view or controller, to the native object that it is shown by; a member of its peer. At
/// first the owner keeps the native object. Once the system or the host takes that one over, it is the other way round:
/// the native object keeps the owner until it is destroyed itself. Never both, or neither would ever end. Any thread.
template<typename Owner, typename Native>
class Bond final {
public:
    /// The owner may be incomplete.
    Bond(Owner& owner, Native* native) : m_owner(owner), m_kept(native), m_native(native)
    {
        auto const lock = lockBonds();
        [ZLVOwnerReference of:native]->_owner = &owner;
    }
    Bond(Bond const&) = delete;
    Bond& operator=(Bond const&) = delete;
    ~Bond()
    {
        auto const lock = lockBonds();
        ZLVOwnerReference* reference = [ZLVOwnerReference existingOf:native()];
        if (reference && reference->_owner == decltype(reference->_owner)(&m_owner))
            reference->_owner = std::monostate {};
    }

    /// Absent (nil) once the native object that kept the owner is gone.
    [[nodiscard]] Native* native() const
    {
        id const native = m_native;
        return native;
    }

    /// From now on the native object keeps the owner, which must belong to a `std::shared_ptr`. Whoever calls this
    /// keeps the native object.
    Native* handOver()
    {
        auto const lock = lockBonds();
        Native* native = this->native();
        auto owner = m_kept ? m_owner.weak_from_this().lock() : nullptr;
        if (!owner)
            return native;
        [ZLVOwnerReference of:native]->_kept = std::move(owner);
        m_kept = nil;
        return native;
    }

    /// The owner of a native object, or nullptr if it has none, or not any more.
    [[nodiscard]] static std::shared_ptr<Owner> ownerOf(Native* native)
    {
        auto const lock = lockBonds();
        ZLVOwnerReference* reference = [ZLVOwnerReference existingOf:native];
        auto* const* const owner = reference ? std::get_if<Owner*>(&reference->_owner) : nullptr;
        return owner ? (*owner)->weak_from_this().lock() : nullptr;
    }

private:
    Owner& m_owner;
    // Nil once the native object keeps the owner.
    Native* m_kept;
    // Of no particular class, because the compiler takes a weak pointer to a dependent class for a strong one.
    __weak id m_native;
};

}
