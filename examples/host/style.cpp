#include "examples/host/style.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <adwaita.h>

namespace zelvora::examples {

namespace {

// The library's colours follow the appearance, so the app's are mixed from them. What can be touched is at least 44
// high.
constexpr char const* style = R"(
    @define-color accent_bg_color #4b46a6;
    @define-color accent_fg_color #ffffff;

    window { font-family: "Nanum Gothic", "NanumGothic", sans-serif; }

    .bar { background: #2c2960; color: #ffffff; padding: 2px 4px; }
    /* The library's 0.55 is less contrast than small text needs. */
    .subtitle { opacity: 0.8; }
    .bar button { min-width: 44px; min-height: 44px; padding: 0; }
    .footer {
        background: mix(@window_bg_color, @accent_bg_color, 0.08); color: @window_fg_color;
        border-top: 1px solid @borders; padding: 12px 16px; font-size: 12px;
    }

    .home { background: @window_bg_color; color: @window_fg_color; }
    .hero {
        background: linear-gradient(150deg, #3a3590, #6d4aa8 70%, #a0568f); color: #ffffff;
        border-radius: 24px; padding: 30px 24px 26px;
    }
    .hero .greeting { font-size: 27px; font-weight: 800; }
    .hero .more { font-size: 14px; color: alpha(#ffffff, 0.88); }
    .hero button { margin-top: 20px; min-height: 50px; border-radius: 25px; background: #ffffff; color: #2c2960; font-size: 16px; }
    .home row { min-height: 48px; }
    .home switch { margin: 10px 0; }

    .cover { background: @window_bg_color; color: @window_fg_color; }
    .cover spinner { min-width: 36px; min-height: 36px; }
    .cover button.pill { min-height: 48px; min-width: 160px; padding: 0 28px; }
    /* What is there at once needs no sign that it is coming. */
    .cover .waiting { animation: appear 250ms 150ms both; }
    @keyframes appear { from { opacity: 0; } }
    progressbar.loading > trough, progressbar.loading > trough > progress { min-height: 3px; border-radius: 0; }
    progressbar.loading > trough { background: transparent; }
)";

AdwColorScheme schemeNamed(std::string const& appearance)
{
    if (appearance == "dark")
        return ADW_COLOR_SCHEME_FORCE_DARK;
    return appearance == "light" ? ADW_COLOR_SCHEME_FORCE_LIGHT : ADW_COLOR_SCHEME_DEFAULT;
}

}

void installStyle(std::string const& appearance)
{
    adw_init();
    // Fitted to whole pixels, the small letters of the Korean family lose their descenders.
    g_object_set(gtk_settings_get_default(), "gtk-xft-hinting", 0, nullptr);
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(), schemeNamed(appearance));
    auto const provider = gtk::adopt(gtk_css_provider_new());
    gtk_css_provider_load_from_data(provider.get(), style, -1);
    gtk_style_context_add_provider_for_display(
        gdk_display_get_default(), GTK_STYLE_PROVIDER(provider.get()), GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}
