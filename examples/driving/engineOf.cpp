#include "examples/driving/engineOf.h"

#include "ZelvoraAdapters/gtk/Host.h"

namespace zelvora::examples {

WebKitWebView* engineOf(ZelvoraWebView const& view)
{
    return gtk::webKitWebViewOf(dynamic_cast<platform::WKWebView const&>(*view.subviews().front()));
}

}
