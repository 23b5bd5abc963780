#include "examples/host/HomePage.h"

#include "ZelvoraIOS/ZelvoraStorage.h"
#include "examples/host/bars.h"
#include "examples/host/texts.h"

#include <adwaita.h>

namespace zelvora::examples {

namespace {

constexpr std::size_t linesShown = 8;
constexpr int gap = 18;

GtkWidget* makeRow(std::string const& title, std::string const& subtitle = {})
{
    auto* const row = adw_action_row_new();
    // Addresses and events are no markup.
    adw_preferences_row_set_use_markup(ADW_PREFERENCES_ROW(row), FALSE);
    adw_preferences_row_set_title(ADW_PREFERENCES_ROW(row), title.c_str());
    adw_action_row_set_subtitle(ADW_ACTION_ROW(row), subtitle.c_str());
    return row;
}

void setSubtitle(GtkWidget* row, std::string const& subtitle)
{
    adw_action_row_set_subtitle(ADW_ACTION_ROW(row), subtitle.c_str());
}

GtkWidget* makeGroup(char const* title = nullptr)
{
    auto* const group = adw_preferences_group_new();
    if (title)
        adw_preferences_group_set_title(ADW_PREFERENCES_GROUP(group), title);
    return group;
}

void addRow(GtkWidget* group, GtkWidget* row)
{
    adw_preferences_group_add(ADW_PREFERENCES_GROUP(group), row);
}

void onActivation(GtkWidget* row, char const* icon, std::function<void()> const& work)
{
    adw_action_row_add_suffix(ADW_ACTION_ROW(row), gtk_image_new_from_icon_name(icon));
    gtk_list_box_row_set_activatable(GTK_LIST_BOX_ROW(row), TRUE);
    auto const didActivate = [](AdwActionRow*, gpointer held) { (*static_cast<std::function<void()>*>(held))(); };
    auto const release = [](gpointer held, GClosure*) { delete static_cast<std::function<void()>*>(held); };
    g_signal_connect_data(
        row, "activated", G_CALLBACK(+didActivate), new std::function(work), +release, G_CONNECT_DEFAULT);
}

GtkWidget* makeLabel(char const* text, char const* cssClass)
{
    auto* const label = gtk_label_new(text);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_wrap(GTK_LABEL(label), TRUE);
    gtk_widget_add_css_class(label, cssClass);
    return label;
}

}

HomePage::HomePage(Actions const& actions)
    : m_widget(gtk_scrolled_window_new())
    , m_column(gtk_box_new(GTK_ORIENTATION_VERTICAL, gap))
{
    gtk_widget_add_css_class(m_widget, "home");
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(m_widget), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    auto* const clamp = adw_clamp_new();
    adw_clamp_set_child(ADW_CLAMP(clamp), m_column);
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(m_widget), clamp);
    gtk_widget_set_margin_top(m_column, gap);
    gtk_widget_set_margin_bottom(m_column, gap);
    gtk_widget_set_margin_start(m_column, gap);
    gtk_widget_set_margin_end(m_column, gap);

    addHero(actions.present);
    addActions(actions);
    addDeveloperPart();
    showEventQueue();
}

void HomePage::addHero(std::function<void()> const& present)
{
    auto* const hero = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
    gtk_widget_add_css_class(hero, "hero");
    gtk_box_append(GTK_BOX(hero), makeLabel(texts().greeting, "greeting"));
    gtk_box_append(GTK_BOX(hero), makeLabel(texts().greetingMore, "more"));
    auto* const open = gtk_button_new_with_label(texts().open);
    onClick(open, present);
    gtk_box_append(GTK_BOX(hero), open);
    gtk_box_append(GTK_BOX(m_column), hero);
}

void HomePage::addActions(Actions const& actions)
{
    auto* const group = makeGroup();
    auto* const push = makeRow(texts().push, texts().pushNote);
    onActivation(push, "go-next-symbolic", actions.push);
    addRow(group, push);
    m_upload = makeRow(texts().upload);
    onActivation(m_upload, "send-to-symbolic", actions.upload);
    addRow(group, m_upload);
    gtk_box_append(GTK_BOX(m_column), group);
}

void HomePage::addDeveloperPart()
{
    auto* const group = makeGroup();
    auto* const row = makeRow(texts().developer, texts().developerNote);
    m_switch = gtk_switch_new();
    gtk_widget_set_valign(m_switch, GTK_ALIGN_CENTER);
    adw_action_row_add_suffix(ADW_ACTION_ROW(row), m_switch);
    adw_action_row_set_activatable_widget(ADW_ACTION_ROW(row), m_switch);
    addRow(group, row);
    gtk_box_append(GTK_BOX(m_column), group);

    m_developerPart = gtk_box_new(GTK_ORIENTATION_VERTICAL, gap);
    gtk_box_append(GTK_BOX(m_column), m_developerPart);
    g_object_bind_property(m_switch, "active", m_developerPart, "visible", G_BINDING_SYNC_CREATE);
    auto* const lately = makeGroup();
    m_told = makeRow(texts().told, texts().nothing);
    addRow(lately, m_told);
    m_openingTime = makeRow(texts().openingTime, texts().nothing);
    addRow(lately, m_openingTime);
    gtk_box_append(GTK_BOX(m_developerPart), lately);
    m_pages = addDeveloperList(texts().pages);
    fill(m_pages, {});
    m_queue = addDeveloperList(texts().queue);
}

HomePage::List HomePage::addDeveloperList(char const* title)
{
    List list { .group = makeGroup(title), .rows = {} };
    gtk_box_append(GTK_BOX(m_developerPart), list.group);
    return list;
}

void HomePage::fill(List& list, std::vector<Description> const& lines)
{
    for (auto* const row : list.rows)
        adw_preferences_group_remove(ADW_PREFERENCES_GROUP(list.group), row);
    list.rows.clear();
    for (auto const& line : lines)
        list.rows.push_back(makeRow(line.name, line.details));
    if (lines.empty())
        list.rows.push_back(makeRow(texts().nothing));
    for (auto* const row : list.rows)
        addRow(list.group, row);
}

void HomePage::tell(std::string const& sentence)
{
    setSubtitle(m_told, sentence);
}

void HomePage::tellOpeningTime(int milliseconds)
{
    setSubtitle(m_openingTime, std::to_string(milliseconds) + " ms");
}

void HomePage::addPageNavigation(std::string const& url)
{
    m_urls.push_back(url);
    if (m_urls.size() > linesShown)
        m_urls.pop_front();
    std::vector<Description> lines;
    for (auto const& known : m_urls)
        lines.push_back(describeAddress(known));
    fill(m_pages, lines);
}

void HomePage::showEventQueue()
{
    auto const events = ZelvoraStorage::getEventTrackingData();
    setSubtitle(m_upload, std::string(texts().waiting) + ": " + std::to_string(events.size()));
    std::vector<Description> lines;
    for (auto const& event : events.prefix(linesShown))
        lines.push_back(describeEvent(event));
    fill(m_queue, lines);
}

void HomePage::showDeveloperPart(bool shown)
{
    gtk_switch_set_active(GTK_SWITCH(m_switch), shown);
}

}
