#include "examples/developer/panel/Panel.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <utility>

namespace zelvora::developer {

namespace {

constexpr char const* style = R"(
    .developer { padding: 10px 12px; }
    .developer .address { font-family: monospace; font-size: 11px; }
    .developer .caption { font-size: 11px; opacity: 0.7; }
    .developer .heading { font-weight: bold; margin-top: 4px; }
    .developer button, .developer dropdown button { font-size: 12px; min-height: 24px; padding: 2px 8px; }
    .developer flowboxchild { padding: 1px; }
    .developer list { background: transparent; }
    .developer row { padding: 6px 4px; border-bottom: 1px solid alpha(currentColor, 0.12); }
    .developer .title { font-weight: bold; font-size: 12px; }
    .developer .note { font-size: 12px; opacity: 0.75; }
    .developer .warned { font-size: 12px; color: #9a5b00; }
    .developer.dark .warned { color: #ffc266; }
    .developer .details { font-family: monospace; font-size: 11px; padding: 6px; }
    .developer .mark { font-size: 11px; font-weight: bold; border-radius: 8px; padding: 1px 7px; }
    .developer .good { background: #1b7a43; color: #ffffff; }
    .developer .answer { background: #1f5fbf; color: #ffffff; }
    .developer .bad { background: #b3261e; color: #ffffff; }
    .developer .waiting { background: #6d5a00; color: #ffffff; }
    .developer .plain { background: alpha(currentColor, 0.12); }
)";

void removeChildren(GtkWidget* box)
{
    while (auto* const child = gtk_widget_get_first_child(box))
        gtk_box_remove(GTK_BOX(box), child);
}

// The widget owns the work.
void onSignal(GtkWidget* widget, char const* signal, std::function<void()> const& work)
{
    using Work = std::function<void()>;
    g_signal_connect_data(
        widget, signal, G_CALLBACK(+[](Work* held) { (*held)(); }), new Work(work),
        [](gpointer held, GClosure*) { delete static_cast<Work*>(held); }, G_CONNECT_SWAPPED);
}

GtkWidget* makeText(char const* name, std::string const& text)
{
    auto* const label = gtk_label_new(text.c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_widget_add_css_class(label, name);
    return label;
}

}

Panel::Panel(Actions actions, Switches const& switches)
    : m_actions(std::move(actions))
    , m_switches(switches)
    , m_widget(gtk::sink(gtk_box_new(GTK_ORIENTATION_VERTICAL, 6)))
{
    gtk_widget_add_css_class(widget(), "developer");
    gtk_widget_set_hexpand(widget(), TRUE);
    build();
}

std::string Panel::say(char const* korean, char const* english) const
{
    return m_switches.language == Language::Korean ? korean : english;
}

void Panel::build()
{
    auto const part =
        m_stack ? std::string(gtk_stack_get_visible_child_name(GTK_STACK(m_stack))) : std::string(parts.front());
    removeChildren(widget());
    if (m_switches.look == Look::Dark)
        gtk_widget_add_css_class(widget(), "dark");
    else
        gtk_widget_remove_css_class(widget(), "dark");
    m_address = makeText("address", "");
    gtk_label_set_ellipsize(GTK_LABEL(m_address), PANGO_ELLIPSIZE_MIDDLE);
    gtk_box_append(GTK_BOX(widget()), m_address);
    m_controls = gtk_flow_box_new();
    gtk_flow_box_set_selection_mode(GTK_FLOW_BOX(m_controls), GTK_SELECTION_NONE);
    constexpr guint mostInLine = 6;
    gtk_flow_box_set_max_children_per_line(GTK_FLOW_BOX(m_controls), mostInLine);
    gtk_box_append(GTK_BOX(widget()), m_controls);
    addButtons();
    addSwitches();
    addLists();
    showPart(part);
}

void Panel::addControl(GtkWidget* control)
{
    gtk_widget_set_valign(control, GTK_ALIGN_END);
    gtk_flow_box_insert(GTK_FLOW_BOX(m_controls), control, -1);
    gtk_widget_set_focusable(gtk_widget_get_parent(control), FALSE);
}

void Panel::addButtons()
{
    addButton(say("웹 검사기", "Inspector"), m_actions.inspect);
    addButton(say("새로 고침", "Reload"), m_actions.reload);
    addButton(say("이벤트 전송", "Upload"), m_actions.upload);
    addButton(say("뒤로 밀기", "Back swipe"), m_actions.swipeBack);
    addButton(say("바닥글", "Footer"), m_actions.toggleFooter);
    addButton(say("웹 프로세스 끝내기", "Kill the page"), m_actions.killPage);
}

void Panel::addButton(std::string const& label, std::function<void()> const& work)
{
    auto* const button = gtk_button_new_with_label(label.c_str());
    onSignal(button, "clicked", work);
    addControl(button);
}

void Panel::addSwitches()
{
    addSwitch("service", say("서버", "Service"), { "works", "refuses" },
        { say("정상", "works"), say("거절", "refuses") }, std::to_underlying(m_switches.service));
    addSwitch("network", say("네트워크", "Network"), { "on", "slow", "off" },
        { say("켬", "on"), say("느림", "slow"), say("끔", "off") }, std::to_underlying(m_switches.network));
    addSwitch("language", say("언어", "Language"), { "ko", "en" }, { "한국어", "English" },
        std::to_underlying(m_switches.language));
    addSwitch("look", say("테마", "Look"), { "light", "dark" }, { say("밝게", "light"), say("어둡게", "dark") },
        std::to_underlying(m_switches.look));
    std::vector<std::string_view> places { "phone", "tablet" };
    std::vector<std::string> labels { say("휴대폰", "phone"), say("태블릿", "tablet") };
    auto selected = static_cast<std::size_t>(m_switches.size == tabletSize);
    if (m_switches.size != phoneSize && m_switches.size != tabletSize) {
        // A script has chosen a size of its own.
        places.emplace_back();
        labels.push_back(std::to_string(m_switches.size.width) + "×" + std::to_string(m_switches.size.height));
        selected = places.size() - 1;
    }
    addSwitch("size", say("크기", "Size"), places, labels, selected);
}

void Panel::addSwitch(std::string_view name, std::string const& label, std::vector<std::string_view> const& places,
    std::vector<std::string> const& labels, std::size_t selected)
{
    auto* const names = gtk_string_list_new(nullptr);
    for (auto const& text : labels)
        gtk_string_list_append(names, text.c_str());
    auto* const choice = gtk_drop_down_new(G_LIST_MODEL(names), nullptr);
    gtk_drop_down_set_selected(GTK_DROP_DOWN(choice), static_cast<guint>(selected));
    onSignal(choice, "notify::selected", [this, name, places, choice] {
        auto const place = gtk_drop_down_get_selected(GTK_DROP_DOWN(choice));
        if (auto const changed = place < places.size() ? switched(m_switches, name, places.at(place)) : std::nullopt)
            m_actions.change(*changed);
    });
    auto* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_box_append(GTK_BOX(box), makeText("caption", label));
    gtk_box_append(GTK_BOX(box), choice);
    addControl(box);
}

void Panel::addLists()
{
    gtk_box_append(GTK_BOX(widget()), makeText("heading", say("메시지", "Messages")));
    m_messages = std::make_unique<RowList>(
        say("페이지가 아직 브리지를 부르지 않았습니다.", "The page has not called the bridge yet."));
    gtk_box_append(GTK_BOX(widget()), m_messages->widget());
    m_stack = gtk_stack_new();
    auto* const tabs = gtk_stack_switcher_new();
    gtk_stack_switcher_set_stack(GTK_STACK_SWITCHER(tabs), GTK_STACK(m_stack));
    std::array const empty { say("저장된 값이 없습니다.", "No value is stored."),
        say("기다리는 이벤트가 없습니다.", "No event waits for upload."),
        say("아직 전송하지 않았습니다.", "Nothing was uploaded yet."),
        say("앱이 아직 주소를 받지 않았습니다.", "The app was told of no address yet.") };
    for (std::size_t i = 0; i < parts.size(); ++i) {
        m_lists.at(i) = std::make_unique<RowList>(empty.at(i));
        gtk_stack_add_titled(GTK_STACK(m_stack), m_lists.at(i)->widget(), std::string(parts.at(i)).c_str(), "");
    }
    gtk_box_append(GTK_BOX(widget()), tabs);
    gtk_box_append(GTK_BOX(widget()), m_stack);
}

void Panel::show(Contents const& contents)
{
    gtk_label_set_text(GTK_LABEL(m_address), contents.address.c_str());
    gtk_widget_set_tooltip_text(m_address, contents.address.c_str());
    m_messages->show(contents.messages);
    std::array const titles { say("저장된 값", "Values"), say("이벤트", "Events"), say("전송", "Uploads"),
        say("알림", "Notices") };
    for (std::size_t i = 0; i < parts.size(); ++i) {
        auto const& rows = contents.lists.at(i);
        m_lists.at(i)->show(rows);
        auto* const page = gtk_stack_get_page(GTK_STACK(m_stack), m_lists.at(i)->widget());
        gtk_stack_page_set_title(page, (titles.at(i) + " " + std::to_string(rows.size())).c_str());
    }
}

void Panel::showPart(std::string const& part)
{
    gtk_stack_set_visible_child_name(GTK_STACK(m_stack), part.c_str());
}

void Panel::setSwitches(Switches const& switches)
{
    if (std::exchange(m_switches, switches) != switches)
        build();
}

void Panel::installStyle()
{
    auto const provider = gtk::adopt(gtk_css_provider_new());
    gtk_css_provider_load_from_data(provider.get(), style, -1);
    gtk_style_context_add_provider_for_display(
        gdk_display_get_default(), GTK_STYLE_PROVIDER(provider.get()), GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}
