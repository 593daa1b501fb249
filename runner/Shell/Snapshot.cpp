#include "Shell/Snapshot.h"

#include "Shell/GObjects.h"

#include <algorithm>
#include <cstring>

namespace wrapio {

namespace {

constexpr unsigned patience = 70;  // milliseconds

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, DestroySurface>;

SurfacePtr makeSurface(int width, int height) {
    return SurfacePtr(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
}

/// What `widget` last showed, in device pixels; null when it has no size.
SurfacePtr drawWidget(GtkWidget* widget) {
    const int scale = gtk_widget_get_scale_factor(widget);
    const int width = gtk_widget_get_width(widget);
    const int height = gtk_widget_get_height(widget);
    if (width <= 0 || height <= 0)
        return nullptr;
    const ObjectPtr<GdkPaintable> paintable(gtk_widget_paintable_new(widget));
    GtkSnapshot* snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(paintable.get(), snapshot, width, height);
    GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
    SurfacePtr surface = makeSurface(width * scale, height * scale);
    if (node == nullptr)
        return surface;
    cairo_t* context = cairo_create(surface.get());
    cairo_scale(context, scale, scale);
    gsk_render_node_draw(node, context);
    cairo_destroy(context);
    gsk_render_node_unref(node);
    return surface;
}

SurfacePtr surfaceOf(GdkTexture* texture) {
    SurfacePtr surface = makeSurface(gdk_texture_get_width(texture), gdk_texture_get_height(texture));
    gdk_texture_download(texture, cairo_image_surface_get_data(surface.get()),
                         static_cast<gsize>(cairo_image_surface_get_stride(surface.get())));
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

void paint(cairo_t* context, cairo_surface_t* picture, int y) {
    cairo_set_source_surface(context, picture, 0, y);
    cairo_paint(context);
}

std::string answerOf(cairo_surface_t* surface) {
    cairo_surface_flush(surface);
    const int height = cairo_image_surface_get_height(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    std::string answer = "ok " + std::to_string(cairo_image_surface_get_width(surface)) + " " + std::to_string(height) +
                         " " + std::to_string(stride) + "\n";
    const std::size_t size = static_cast<std::size_t>(height) * static_cast<std::size_t>(stride);
    const std::size_t begin = answer.size();
    answer.resize(begin + size);
    std::memcpy(answer.data() + begin, cairo_image_surface_get_data(surface), size);
    return answer;
}

/// `page` with `header`, which may be null, above it.
std::string composed(const SurfacePtr& header, const SurfacePtr& page) {
    if (!page)
        return "error the window has no size yet\n";
    if (!header)
        return answerOf(page.get());
    const int headerHeight = cairo_image_surface_get_height(header.get());
    const SurfacePtr whole =
        makeSurface(std::max(cairo_image_surface_get_width(header.get()), cairo_image_surface_get_width(page.get())),
                    headerHeight + cairo_image_surface_get_height(page.get()));
    if (cairo_surface_status(whole.get()) != CAIRO_STATUS_SUCCESS)
        return "error the picture is too large\n";
    cairo_t* context = cairo_create(whole.get());
    paint(context, header.get(), 0);
    paint(context, page.get(), headerHeight);
    cairo_destroy(context);
    return answerOf(whole.get());
}

/// Waits for the engine's picture, but not for long; deletes itself when the engine has answered.
struct Waiting {
    ObjectPtr<GtkWidget> view;
    ObjectPtr<GtkWidget> header;
    std::function<void(std::string)> finish;
    Timeout timeout;

    void end(const SurfacePtr& page) {
        timeout.cancel();
        if (const auto finishOnce = std::exchange(finish, nullptr))
            finishOnce(composed(drawWidget(header.get()), page));
    }

    static void ready(GObject* view, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Waiting> self(static_cast<Waiting*>(data));
        const ObjectPtr<GdkTexture> texture(
            webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
        self->end(texture ? surfaceOf(texture.get()) : drawWidget(self->view.get()));
    }
};

ObjectPtr<GtkWidget> keep(GtkWidget* widget) {
    return ObjectPtr<GtkWidget>(GTK_WIDGET(g_object_ref(widget)));
}

}  // namespace

void takeSnapshot(const PageArea& page, GtkWidget* header, std::function<void(std::string answer)> finish) {
    if (!page.showsPage())
        return finish(composed(drawWidget(header), drawWidget(page.visibleWidget())));
    auto* waiting = new Waiting;
    waiting->view = keep(GTK_WIDGET(page.view()));
    waiting->header = keep(header);
    waiting->finish = std::move(finish);
    waiting->timeout.start(patience, [waiting] { waiting->end(drawWidget(waiting->view.get())); });
    webkit_web_view_get_snapshot(page.view(), WEBKIT_SNAPSHOT_REGION_VISIBLE, WEBKIT_SNAPSHOT_OPTIONS_NONE, nullptr,
                                 &Waiting::ready, waiting);
}

}  // namespace wrapio
