#include "examples/host/HomePage.h"

#include "ZelvoraIOS/ZelvoraStorage.h"
#include "examples/host/bars.h"

namespace zelvora::examples {

namespace {

constexpr std::size_t linesShown = 8;

void setText(GtkWidget* label, std::string const& text)
{
    gtk_label_set_text(GTK_LABEL(label), text.c_str());
}

}

HomePage::HomePage(Actions const& actions) : m_widget(gtk_box_new(GTK_ORIENTATION_VERTICAL, 8))
{
    gtk_widget_add_css_class(m_widget, "home");
    auto* const title = addHeading("예제 앱 · Example host");
    gtk_widget_add_css_class(title, "title");
    gtk_box_append(GTK_BOX(m_widget), makeButton("쇼핑 열기 · Open the shop over this screen", actions.present));
    gtk_box_append(GTK_BOX(m_widget), makeButton("화면 스택에 열기 · Push the shop on the stack", actions.push));
    gtk_box_append(GTK_BOX(m_widget), makeButton("이벤트 전송 · Upload the events now", actions.upload));
    addHeading("알림 · What the SDK told");
    m_status = addText();
    addHeading("페이지 이동 · Page navigation");
    m_navigations = addText();
    m_queueHeading = addHeading("");
    m_queue = addText();
    showEventQueue();
}

GtkWidget* HomePage::addHeading(char const* text)
{
    auto* const label = addText();
    gtk_widget_remove_css_class(label, "line");
    gtk_widget_add_css_class(label, "heading");
    setText(label, text);
    return label;
}

GtkWidget* HomePage::addText()
{
    auto* const label = gtk_label_new("");
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    gtk_widget_add_css_class(label, "line");
    gtk_box_append(GTK_BOX(m_widget), label);
    return label;
}

void HomePage::tell(std::string const& sentence)
{
    setText(m_status, sentence);
}

void HomePage::addPageNavigation(std::string const& url)
{
    m_urls.push_back(url);
    if (m_urls.size() > linesShown)
        m_urls.pop_front();
    std::string text;
    for (auto const& known : m_urls)
        text += (text.empty() ? "" : "\n") + known;
    setText(m_navigations, text);
}

void HomePage::showEventQueue()
{
    auto const events = ZelvoraStorage::getEventTrackingData();
    setText(m_queueHeading, "이벤트 대기열 · Event queue: " + std::to_string(events.size()));
    std::string text;
    for (auto const& event : events.prefix(linesShown))
        text += (text.empty() ? "" : "\n") + debugDescription(event);
    setText(m_queue, text);
}

}
