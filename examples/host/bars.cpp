#include "examples/host/bars.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

namespace zelvora::examples {

namespace {

constexpr char const* style = R"(
    .bar { background: #2b2b45; color: #ffffff; padding: 6px 12px; }
    .bar label { font-weight: bold; }
    .bar button { background: #44446a; color: #ffffff; border: none; box-shadow: none; text-shadow: none; }
    .footer { background: #f2f2f7; color: #2b2b45; border-top: 1px solid #d5d5e0; padding: 10px 12px; }
    .home { background: #ffffff; color: #22222e; padding: 16px; }
    .home .title { font-size: 20px; font-weight: bold; }
    .home .heading { font-weight: bold; color: #5c5c86; margin-top: 12px; }
    .home .line { font-size: 12px; }
)";

GtkWidget* makeBar(char const* name)
{
    auto* const bar = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 8);
    gtk_widget_add_css_class(bar, name);
    return bar;
}

GtkWidget* makeLabel(char const* text)
{
    auto* const label = gtk_label_new(text);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_widget_set_hexpand(label, TRUE);
    return label;
}

}

GtkWidget* makeHeader(std::function<void()> const& leave)
{
    auto* const bar = makeBar("bar");
    gtk_box_append(GTK_BOX(bar), makeLabel("예제 앱의 머리글 · Host header"));
    gtk_box_append(GTK_BOX(bar), makeButton("닫기 · Leave", leave));
    return bar;
}

GtkWidget* makeFooter()
{
    auto* const bar = makeBar("footer");
    gtk_box_append(GTK_BOX(bar), makeLabel("예제 앱의 바닥글 · Host footer"));
    return bar;
}

GtkWidget* makeButton(char const* label, std::function<void()> const& work)
{
    auto* const button = gtk_button_new_with_label(label);
    auto const didClick = [](GtkButton*, gpointer held) { (*static_cast<std::function<void()>*>(held))(); };
    auto const release = [](gpointer held, GClosure*) { delete static_cast<std::function<void()>*>(held); };
    g_signal_connect_data(
        button, "clicked", G_CALLBACK(+didClick), new std::function(work), +release, G_CONNECT_DEFAULT);
    return button;
}

void installStyle()
{
    auto const provider = gtk::adopt(gtk_css_provider_new());
    gtk_css_provider_load_from_data(provider.get(), style, -1);
    gtk_style_context_add_provider_for_display(
        gdk_display_get_default(), GTK_STYLE_PROVIDER(provider.get()), GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}
