#include "platform/linux/desktop/ViewPainter.h"

#include "platform/linux/desktop/CanvasBacking.h"
#include "platform/portable/View.h"

namespace platform {

namespace {

void paintOwn(View& view, cairo_t* cairo) {
    Canvas canvas(makeCanvasBacking(cairo, view.bounds().height));
    view.setCanvas(&canvas);
    cairo_save(cairo);
    view.drawRect(view.bounds());
    cairo_restore(cairo);
    view.setCanvas(nullptr);
}

void paintSubviews(View& view, cairo_t* cairo) {
    for (const auto& subview : view.subviews()) {
        const Rect& frame = subview->frame();
        cairo_save(cairo);
        cairo_translate(cairo, frame.x, view.bounds().height - (frame.y + frame.height));
        paintView(*subview, cairo);
        cairo_restore(cairo);
    }
}

}  // namespace

void paintView(View& view, cairo_t* cairo) {
    if (view.isHidden()) return;
    cairo_save(cairo);
    cairo_rectangle(cairo, 0, 0, view.bounds().width, view.bounds().height);
    cairo_clip(cairo);
    paintOwn(view, cairo);
    paintSubviews(view, cairo);
    cairo_restore(cairo);
}

}  // namespace platform
