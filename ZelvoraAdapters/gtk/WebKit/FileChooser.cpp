#include "ZelvoraAdapters/gtk/WebKit/FileChooser.h"

#include <string>
#include <utility>
#include <vector>

namespace zelvora::gtk {

namespace {

// The replacement needs a later GTK than the one that is still common.
G_GNUC_BEGIN_IGNORE_DEPRECATIONS

GtkFileChooserNative* makeDialog(WebKitWebView* view, WebKitFileChooserRequest* request)
{
    auto* const root = gtk_widget_get_root(GTK_WIDGET(view));
    auto* const dialog = gtk_file_chooser_native_new(
        nullptr, GTK_IS_WINDOW(root) ? GTK_WINDOW(root) : nullptr, GTK_FILE_CHOOSER_ACTION_OPEN, nullptr, nullptr);
    gtk_native_dialog_set_modal(GTK_NATIVE_DIALOG(dialog), GTK_IS_WINDOW(root));
    auto* const chooser = GTK_FILE_CHOOSER(dialog);
    gtk_file_chooser_set_select_multiple(chooser, webkit_file_chooser_request_get_select_multiple(request));
    if (auto* const filter = webkit_file_chooser_request_get_mime_types_filter(request))
        gtk_file_chooser_set_filter(chooser, filter);
    return dialog;
}

std::vector<std::string> chosenFiles(GtkFileChooserNative* dialog)
{
    std::vector<std::string> files;
    auto const chosen = adopt(gtk_file_chooser_get_files(GTK_FILE_CHOOSER(dialog)));
    for (guint index = 0; index < g_list_model_get_n_items(chosen.get()); ++index) {
        auto const file = adopt(G_FILE(g_list_model_get_item(chosen.get(), index)));
        // A file on a server may have no path, and the engine reads only local files.
        if (GTextPointer const path(g_file_get_path(file.get())); path)
            files.emplace_back(path.get());
    }
    return files;
}

G_GNUC_END_IGNORE_DEPRECATIONS

}

FileChooser::FileChooser(WebKitWebView* view, WebKitFileChooserRequest* request)
    : m_request(retain(request))
    , m_dialog(adopt(makeDialog(view, request)))
{
    g_signal_connect_swapped(
        m_dialog.get(), "response", G_CALLBACK(+[](FileChooser* self, int response) { self->answer(response); }), this);
    gtk_native_dialog_show(GTK_NATIVE_DIALOG(m_dialog.get()));
}

FileChooser::~FileChooser()
{
    g_signal_handlers_disconnect_by_data(m_dialog.get(), this);
    gtk_native_dialog_destroy(GTK_NATIVE_DIALOG(m_dialog.get()));
    if (m_request)
        webkit_file_chooser_request_cancel(m_request.get());
}

void FileChooser::answer(int response)
{
    auto const request = std::move(m_request);
    if (!request)
        return;
    auto const files = response == GTK_RESPONSE_ACCEPT ? chosenFiles(m_dialog.get()) : std::vector<std::string>();
    if (files.empty())
        return webkit_file_chooser_request_cancel(request.get());
    std::vector<char const*> paths;
    paths.reserve(files.size() + 1);
    for (auto const& file : files)
        paths.push_back(file.c_str());
    paths.push_back(nullptr);
    webkit_file_chooser_request_select_files(request.get(), paths.data());
}

}
