#include "examples/developer/panel/RowList.h"

#include <algorithm>

namespace zelvora::developer {

namespace {

char const* classOf(Mark mark)
{
    switch (mark) {
    case Mark::Good:
        return "good";
    case Mark::Answer:
        return "answer";
    case Mark::Bad:
        return "bad";
    case Mark::Waiting:
        return "waiting";
    case Mark::None:
        break;
    }
    return "plain";
}

GtkWidget* makeLabel(char const* name)
{
    auto* const label = gtk_label_new(nullptr);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_widget_add_css_class(label, name);
    return label;
}

GtkWidget* makeWrapping(char const* name)
{
    auto* const label = makeLabel(name);
    gtk_label_set_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
    return label;
}

void setText(GtkWidget* label, std::string const& text)
{
    gtk_label_set_text(GTK_LABEL(label), text.c_str());
    gtk_widget_set_visible(label, !text.empty());
}

GtkWidget* revealerOf(GtkListBoxRow* row)
{
    auto* const box = gtk_list_box_row_get_child(row);
    return gtk_widget_get_last_child(box);
}

void toggle(GtkListBox*, GtkListBoxRow* row, gpointer)
{
    auto* const revealer = GTK_REVEALER(revealerOf(row));
    gtk_revealer_set_reveal_child(revealer, !gtk_revealer_get_reveal_child(revealer));
}

}

RowList::RowList(std::string const& empty)
    : m_scroller(gtk::sink(gtk_scrolled_window_new()))
    , m_list(gtk_list_box_new())
{
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(widget()), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    gtk_widget_set_vexpand(widget(), TRUE);
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(widget()), m_list);
    gtk_list_box_set_selection_mode(GTK_LIST_BOX(m_list), GTK_SELECTION_NONE);
    auto* const placeholder = makeWrapping("note");
    setText(placeholder, empty);
    gtk_list_box_set_placeholder(GTK_LIST_BOX(m_list), placeholder);
    g_signal_connect(m_list, "row-activated", G_CALLBACK(&toggle), nullptr);
}

RowList::Row RowList::makeRow()
{
    Row row { .widget = gtk_list_box_row_new(),
        .title = makeLabel("title"),
        .mark = makeLabel("mark"),
        .note = makeWrapping("note"),
        .warning = makeWrapping("warned"),
        .details = makeWrapping("details"),
        .shown = {} };
    gtk_label_set_ellipsize(GTK_LABEL(row.title), PANGO_ELLIPSIZE_MIDDLE);
    gtk_widget_set_hexpand(row.title, TRUE);
    gtk_label_set_selectable(GTK_LABEL(row.details), TRUE);
    auto* const first = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 8);
    gtk_box_append(GTK_BOX(first), row.title);
    gtk_box_append(GTK_BOX(first), row.mark);
    auto* const revealer = gtk_revealer_new();
    gtk_revealer_set_child(GTK_REVEALER(revealer), row.details);
    auto* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 2);
    for (auto* const part : { first, row.note, row.warning, revealer })
        gtk_box_append(GTK_BOX(box), part);
    gtk_list_box_row_set_child(GTK_LIST_BOX_ROW(row.widget), box);
    return row;
}

void RowList::fill(Row& row, PanelRow const& content)
{
    if (row.shown == content)
        return;
    setText(row.title, content.title);
    setText(row.mark, content.mark);
    setText(row.note, content.note);
    setText(row.warning, content.warning);
    setText(row.details, content.details);
    gtk_widget_remove_css_class(row.mark, classOf(row.shown.look));
    gtk_widget_add_css_class(row.mark, classOf(content.look));
    row.shown = content;
}

std::size_t RowList::newAtTop(std::vector<PanelRow> const& rows) const
{
    if (m_rows.empty())
        return rows.size();
    auto const first = std::ranges::find(rows, m_rows.front().shown);
    return first == rows.end() ? 0 : static_cast<std::size_t>(first - rows.begin());
}

void RowList::show(std::vector<PanelRow> const& rows)
{
    auto const added = newAtTop(rows);
    std::vector<Row> made;
    for (std::size_t i = 0; i < added; ++i) {
        made.push_back(makeRow());
        gtk_list_box_insert(GTK_LIST_BOX(m_list), made.back().widget, static_cast<int>(i));
    }
    m_rows.insert(m_rows.begin(), made.begin(), made.end());
    while (m_rows.size() < rows.size()) {
        m_rows.push_back(makeRow());
        gtk_list_box_append(GTK_LIST_BOX(m_list), m_rows.back().widget);
    }
    while (m_rows.size() > rows.size()) {
        gtk_list_box_remove(GTK_LIST_BOX(m_list), m_rows.back().widget);
        m_rows.pop_back();
    }
    for (std::size_t i = 0; i < rows.size(); ++i)
        fill(m_rows.at(i), rows.at(i));
}

}
