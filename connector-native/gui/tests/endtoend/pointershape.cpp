#include "desktop.h"

// Last, since it defines names that Qt uses.
#include <X11/extensions/Xfixes.h>

namespace desktop {

QImage pointerShape()
{
    Display *display = XOpenDisplay(nullptr);
    XFixesCursorImage *shape = display ? XFixesGetCursorImage(display) : nullptr;
    if (!shape)
        qFatal("the pointer's shape cannot be read");
    QImage image(shape->width, shape->height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, static_cast<QRgb>(shape->pixels[y * image.width() + x]));
    }
    XFree(shape);
    XCloseDisplay(display);
    return image;
}

} // namespace desktop
