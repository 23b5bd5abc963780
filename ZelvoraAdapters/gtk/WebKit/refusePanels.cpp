#include "ZelvoraAdapters/gtk/WebKit/refusePanels.h"

namespace zelvora::gtk {

namespace {

gboolean answerScriptDialog(WebKitWebView*, WebKitScriptDialog* dialog)
{
    // A page may always be left.
    if (webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM)
        webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
    return TRUE;
}

gboolean answerPrint(WebKitWebView*, WebKitPrintOperation*)
{
    return TRUE;
}

gboolean answerLogin(WebKitWebView*, WebKitAuthenticationRequest* request)
{
    // Cancelling would cancel the load too.
    webkit_authentication_request_authenticate(request, nullptr);
    return TRUE;
}

// While there is a web view, its own handler comes first.
gboolean answerFileChooser(WebKitWebView*, WebKitFileChooserRequest* request)
{
    webkit_file_chooser_request_cancel(request);
    return TRUE;
}

}

void refusePanels(WebKitWebView* view)
{
    g_signal_connect(view, "script-dialog", G_CALLBACK(answerScriptDialog), nullptr);
    g_signal_connect(view, "print", G_CALLBACK(answerPrint), nullptr);
    g_signal_connect(view, "authenticate", G_CALLBACK(answerLogin), nullptr);
    g_signal_connect(view, "run-file-chooser", G_CALLBACK(answerFileChooser), nullptr);
    webkit_settings_set_enable_fullscreen(webkit_web_view_get_settings(view), FALSE);
}

}
