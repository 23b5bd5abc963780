#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <webkit/webkit.h>

namespace zelvora::gtk {

/// The system's file chooser, open for a page's file input. Destroying it closes it, and the page then has no file.
class FileChooser final {
public:
    FileChooser(WebKitWebView* view, WebKitFileChooserRequest* request);
    FileChooser(FileChooser const&) = delete;
    FileChooser& operator=(FileChooser const&) = delete;
    ~FileChooser();

private:
    void answer(int response);

    GObjectPointer<WebKitFileChooserRequest> m_request;
    GObjectPointer<GtkFileChooserNative> m_dialog;
};

}
