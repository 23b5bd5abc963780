#pragma once

#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#import "module/ObjectiveC/ZelvoraSDKDelegate.h"

#include <memory>

namespace zelvora::module {

/// Stands for the host's delegate. The surface keeps it; the SDK refers to it weakly. Once the host's delegate is gone,
/// the container behaves as without one. Main thread, but it may be made and destroyed on any.
class HostDelegate final : public ZelvoraSDK::ZelvoraSDKDelegate {
public:
    /// nullptr for nil.
    [[nodiscard]] static std::shared_ptr<HostDelegate> referringTo(id<ZelvoraSDKDelegate> delegate);
    [[nodiscard]] static std::shared_ptr<HostDelegate> keeping(id<ZelvoraSDKDelegate> delegate);

    /// What was given, or nil once it is gone. Any thread.
    [[nodiscard]] id<ZelvoraSDKDelegate> delegate() const { return m_delegate; }
    /// What was given to `keeping`, else nil. Any thread.
    [[nodiscard]] id<ZelvoraSDKDelegate> kept() const { return m_kept; }

    // ZelvoraSDK::ZelvoraSDKDelegate
    bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView& webView) override;
    void zelvoraSDKWillDismiss() override;

private:
    __weak id<ZelvoraSDKDelegate> m_delegate;
    id<ZelvoraSDKDelegate> m_kept;
};

}
