#include "module/ObjectiveC/internal/HostDelegate.h"

#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#import "module/ObjectiveC/ZelvoraWebView.h"

namespace zelvora::module {

std::shared_ptr<HostDelegate> HostDelegate::referringTo(id<ZelvoraSDKDelegate> delegate)
{
    if (!delegate)
        return nullptr;
    auto made = std::make_shared<HostDelegate>();
    made->m_delegate = delegate;
    return made;
}

std::shared_ptr<HostDelegate> HostDelegate::keeping(id<ZelvoraSDKDelegate> delegate)
{
    auto made = referringTo(delegate);
    if (made)
        made->m_kept = delegate;
    return made;
}

bool HostDelegate::zelvoraSDKShouldHandleBackAction(ZelvoraWebView& webView)
{
    id<ZelvoraSDKDelegate> const delegate = m_delegate;
    if (!delegate)
        return true;
    return [delegate zelvoraSDKShouldHandleBackAction:static_cast<::ZelvoraWebView*>(uikit::nativeOf(webView))];
}

void HostDelegate::zelvoraSDKWillDismiss()
{
    [m_delegate zelvoraSDKWillDismiss];
}

}
