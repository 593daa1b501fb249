#include "Shell/PageArea.h"

#include "Shell/GObjects.h"

namespace wrapio {

namespace {

GtkProgressBar* makeProgressBar() {
    GtkWidget* bar = gtk_progress_bar_new();
    gtk_widget_add_css_class(bar, "load-progress");
    gtk_widget_set_valign(bar, GTK_ALIGN_START);
    gtk_widget_set_can_target(bar, FALSE);
    gtk_widget_set_visible(bar, FALSE);
    return GTK_PROGRESS_BAR(bar);
}

}  // namespace

PageArea::PageArea(WebKitWebView* view)
    : m_view(view)
    , m_stack(GTK_STACK(gtk_stack_new()))
    , m_overlay(GTK_OVERLAY(gtk_overlay_new()))
    , m_progress(makeProgressBar()) {
    gtk_stack_add_child(m_stack, GTK_WIDGET(view));
    gtk_stack_add_child(m_stack, m_status.widget());
    gtk_widget_set_vexpand(GTK_WIDGET(m_overlay), TRUE);
    gtk_overlay_set_child(m_overlay, GTK_WIDGET(m_stack));
    gtk_overlay_add_overlay(m_overlay, GTK_WIDGET(m_progress));
    // The view goes with the same window as these widgets do, so that nobody needs to disconnect.
    g_object_bind_property(view, "estimated-load-progress", m_progress, "fraction", G_BINDING_DEFAULT);
    g_object_bind_property(view, "is-loading", m_progress, "visible", G_BINDING_SYNC_CREATE);
}

void PageArea::showPage() {
    if (showsPage())
        return;
    gtk_stack_set_visible_child(m_stack, GTK_WIDGET(m_view));
    gtk_widget_grab_focus(GTK_WIDGET(m_view));
}

void PageArea::showStatus(const Message& message, const std::vector<Choice>& choices) {
    m_status.show(message, choices);
    gtk_stack_set_visible_child(m_stack, m_status.widget());
    m_status.focus();
}

bool PageArea::showsPage() const {
    return visibleWidget() == GTK_WIDGET(m_view);
}

}  // namespace wrapio
