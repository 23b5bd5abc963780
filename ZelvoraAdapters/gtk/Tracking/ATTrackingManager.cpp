#include "ZelvoraAdapters/gtk/Tracking/ATTrackingManager.h"

#include "ZelvoraAdapters/gtk/Tracking/TrackingStore.h"

#include <string_view>
#include <utility>

namespace zelvora::gtk {

using Status = platform::ATTrackingAuthorizationStatus;

namespace {

struct Texts {
    std::string question;
    char const* explanation;
    char const* deny;
    char const* allow;
};

Texts textsFor(std::string const& appName)
{
    if (std::string_view(g_get_language_names()[0]).starts_with("ko")) {
        return { "“" + appName + "” 앱이 내 활동을 추적하도록 허용할까요?",
            "허용하면 쇼핑 혜택을 맞춤으로 보여 주기 위해 이 기기의 광고 식별자가 쇼핑 서비스에 전달됩니다. "
            "허용하지 않아도 앱을 그대로 사용할 수 있습니다.",
            "허용 안 함", "허용" };
    }
    return { "Allow “" + appName + "” to track your activity?",
        "If you allow it, the advertising identifier of this device is sent to the shopping service to show you offers "
        "that suit you. The app works the same if you do not.",
        "Don’t Allow", "Allow" };
}

// The toolkit leaves the texts at the window's edge, and its buttons are made for pointers.
void giveRoom(GtkDialog* dialog)
{
    constexpr int margin = 24;
    constexpr int width = 340;
    constexpr int height = 44;
    auto* const texts = gtk_message_dialog_get_message_area(GTK_MESSAGE_DIALOG(dialog));
    gtk_widget_set_margin_start(texts, margin);
    gtk_widget_set_margin_end(texts, margin);
    gtk_widget_set_margin_top(texts, margin);
    gtk_window_set_default_size(GTK_WINDOW(dialog), width, -1);
    for (auto const response : { GTK_RESPONSE_REJECT, GTK_RESPONSE_ACCEPT })
        gtk_widget_set_size_request(gtk_dialog_get_widget_for_response(dialog, response), -1, height);
}

GtkWindow* activeWindow()
{
    auto* windows = gtk_window_get_toplevels();
    GtkWindow* shown = nullptr;
    for (guint index = 0; index < g_list_model_get_n_items(windows); ++index) {
        // The toolkit's list keeps the windows alive.
        auto const item = adopt(static_cast<GtkWindow*>(g_list_model_get_item(windows, index)));
        auto* window = item.get();
        if (gtk_window_is_active(window))
            return window;
        if (gtk_widget_get_mapped(GTK_WIDGET(window)))
            shown = window;
    }
    return shown;
}

}

ATTrackingManager::ATTrackingManager(TrackingStore& store, std::string appName)
    : m_store(store)
    , m_appName(std::move(appName))
{
}

ATTrackingManager::~ATTrackingManager()
{
    if (m_dialog)
        gtk_window_destroy(std::exchange(m_dialog, nullptr));
    complete();
}

Status ATTrackingManager::trackingAuthorizationStatus() const
{
    return m_store.status();
}

void ATTrackingManager::requestTrackingAuthorization(Completion completion)
{
    m_completions.push_back(std::move(completion));
    if (m_store.status() != Status::NotDetermined)
        complete();
    else if (m_dialog)
        gtk_window_present(m_dialog);
    else
        showDialog();
}

void ATTrackingManager::showDialog()
{
    auto const texts = textsFor(m_appName);
    m_dialog = GTK_WINDOW(gtk_message_dialog_new(activeWindow(), GTK_DIALOG_DESTROY_WITH_PARENT, GTK_MESSAGE_QUESTION,
        GTK_BUTTONS_NONE, "%s", texts.question.c_str()));
    gtk_window_set_modal(m_dialog, TRUE);
    gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(m_dialog), "%s", texts.explanation);
    gtk_dialog_add_button(GTK_DIALOG(m_dialog), texts.deny, GTK_RESPONSE_REJECT);
    gtk_dialog_add_button(GTK_DIALOG(m_dialog), texts.allow, GTK_RESPONSE_ACCEPT);
    giveRoom(GTK_DIALOG(m_dialog));
    g_signal_connect(m_dialog, "response",
        G_CALLBACK(+[](GtkDialog*, int response, ATTrackingManager* self) { self->didRespond(response); }), this);
    // The dialog may be destroyed with its parent, without a response.
    g_signal_connect_swapped(m_dialog, "destroy", G_CALLBACK(+[](ATTrackingManager* self) {
        if (std::exchange(self->m_dialog, nullptr))
            self->complete();
    }),
        this);
    gtk_window_present(m_dialog);
}

void ATTrackingManager::didRespond(int response)
{
    if (response == GTK_RESPONSE_ACCEPT)
        m_store.setStatus(Status::Authorized);
    else if (response == GTK_RESPONSE_REJECT)
        m_store.setStatus(Status::Denied);
    gtk_window_destroy(std::exchange(m_dialog, nullptr));
    complete();
}

void ATTrackingManager::complete()
{
    for (auto& completion : std::exchange(m_completions, {}))
        completion(m_store.status());
}

}
