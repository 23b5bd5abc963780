#include "examples/host/ShopCover.h"

#include "ZelvoraAdapters/gtk/Host.h"
#include "examples/driving/engineOf.h"
#include "examples/host/bars.h"
#include "examples/host/texts.h"

#include <adwaita.h>

#include <string_view>

namespace zelvora::examples {

namespace {

using platform::NSLayoutConstraint;
using platform::UIView;

constexpr char const* loadingPage = "loading";
constexpr char const* failurePage = "failure";

GtkWidget* makeLoading()
{
    auto* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 18);
    gtk_widget_set_valign(box, GTK_ALIGN_CENTER);
    gtk_widget_add_css_class(box, "waiting");
    auto* const spinner = gtk_spinner_new();
    gtk_widget_set_halign(spinner, GTK_ALIGN_CENTER);
    gtk_spinner_start(GTK_SPINNER(spinner));
    gtk_box_append(GTK_BOX(box), spinner);
    gtk_box_append(GTK_BOX(box), gtk_label_new(texts().loading));
    return box;
}

GtkWidget* makeStack()
{
    auto* const stack = gtk_stack_new();
    gtk_widget_add_css_class(stack, "cover");
    gtk_stack_set_transition_type(GTK_STACK(stack), GTK_STACK_TRANSITION_TYPE_CROSSFADE);
    return stack;
}

GtkWidget* makeProgress()
{
    auto* const progress = gtk_progress_bar_new();
    gtk_widget_set_name(progress, "progress");
    gtk_widget_add_css_class(progress, "loading");
    gtk_accessible_update_property(GTK_ACCESSIBLE(progress), GTK_ACCESSIBLE_PROPERTY_LABEL, texts().loading, -1);
    return progress;
}

GtkWidget* makePill(char const* label, std::function<void()> const& work)
{
    auto* const button = gtk_button_new_with_label(label);
    gtk_widget_add_css_class(button, "pill");
    gtk_widget_set_halign(button, GTK_ALIGN_CENTER);
    onClick(button, work);
    return button;
}

}

std::shared_ptr<ShopCover> ShopCover::layOver(ZelvoraWebView& webView)
{
    std::shared_ptr<ShopCover> cover(new ShopCover(webView));
    cover->place(webView);
    return cover;
}

ShopCover::ShopCover(ZelvoraWebView& webView)
    : m_engine(gtk::retain(engineOf(webView)))
    , m_stack(makeStack())
    , m_progress(makeProgress())
    , m_watch(m_engine.get(), *this)
{
    gtk_stack_add_named(GTK_STACK(m_stack), makeLoading(), loadingPage);
    gtk_stack_add_named(GTK_STACK(m_stack), makeFailure(), failurePage);
}

void ShopCover::place(UIView& webView)
{
    auto* const container = webView.superview();
    auto const content = gtk::wrapWidget(m_stack);
    auto const line = gtk::wrapWidget(m_progress);
    addSubview(content);
    container->addSubview(shared_from_this());
    container->addSubview(line);
    for (auto* view : { static_cast<UIView*>(this), content.get(), line.get() }) {
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        NSLayoutConstraint::activate({
            view->topAnchor().constraintEqualTo(webView.topAnchor()),
            view->leadingAnchor().constraintEqualTo(webView.leadingAnchor()),
            view->trailingAnchor().constraintEqualTo(webView.trailingAnchor()),
        });
        if (view != line.get())
            NSLayoutConstraint::activate({ view->bottomAnchor().constraintEqualTo(webView.bottomAnchor()) });
    }
    show(loadingPage);
    avoidFlash();
}

// Until a page is drawn, the engine's own white would show between the cover and a dark page.
void ShopCover::avoidFlash()
{
    GdkRGBA background;
    if (gtk_style_context_lookup_color(gtk_widget_get_style_context(m_stack), "window_bg_color", &background))
        webkit_web_view_set_background_color(m_engine.get(), &background);
}

GtkWidget* ShopCover::makeFailure()
{
    auto* const retry = makePill(texts().tryAgain, [this] { tryAgain(); });
    gtk_widget_set_name(retry, "try-again");
    gtk_widget_add_css_class(retry, "suggested-action");
    m_back = makePill(texts().back, [this] { setHidden(true); });
    gtk_widget_set_name(m_back, "back");
    auto* const buttons = gtk_box_new(GTK_ORIENTATION_VERTICAL, 12);
    gtk_box_append(GTK_BOX(buttons), retry);
    gtk_box_append(GTK_BOX(buttons), m_back);

    auto* const page = adw_status_page_new();
    adw_status_page_set_icon_name(ADW_STATUS_PAGE(page), "network-offline-symbolic");
    adw_status_page_set_title(ADW_STATUS_PAGE(page), texts().failure);
    adw_status_page_set_description(ADW_STATUS_PAGE(page), texts().failureMore);
    adw_status_page_set_child(ADW_STATUS_PAGE(page), buttons);
    return page;
}

bool ShopCover::showsFailure() const
{
    return !isHidden() && gtk_stack_get_visible_child_name(GTK_STACK(m_stack)) == std::string_view(failurePage);
}

void ShopCover::show(char const* page)
{
    gtk_stack_set_visible_child_name(GTK_STACK(m_stack), page);
    setHidden(false);
}

void ShopCover::tryAgain()
{
    show(loadingPage);
    webkit_web_view_load_uri(m_engine.get(), m_failedURL.c_str());
}

void ShopCover::didStartLoad()
{
    if (!m_hasPage)
        show(loadingPage);
}

void ShopCover::didProgress(double progress)
{
    gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(m_progress), progress);
    gtk_widget_set_visible(m_progress, progress < 1);
}

void ShopCover::didCommitLoad()
{
    m_hasPage = true;
    setHidden(true);
}

void ShopCover::didFinishLoad()
{
    gtk_widget_set_visible(m_progress, FALSE);
}

void ShopCover::didFailLoad(std::string const& url, std::string const& reason, PageBefore pageBefore)
{
    g_message("%s could not be loaded: %s", url.c_str(), reason.c_str());
    m_failedURL = url;
    m_hasPage = m_hasPage && pageBefore == PageBefore::Kept;
    gtk_widget_set_visible(m_back, m_hasPage);
    gtk_widget_set_visible(m_progress, FALSE);
    show(failurePage);
}

}
