#include "skin/native_shape.h"

#include <QGuiApplication>
#include <vector>
#include <xcb/shape.h>

bool ShapeInDevicePixels(const QWidget& window, const QRegion& outline) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // A platform that paints nowhere answers too, and has no connection.
    if (x11 == nullptr || x11->connection() == nullptr || !window.testAttribute(Qt::WA_WState_Created)) {
        return false;
    }
    std::vector<xcb_rectangle_t> rectangles;
    rectangles.reserve(static_cast<std::size_t>(outline.rectCount()));
    for (const QRect& rect : outline) {
        rectangles.push_back({static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                              static_cast<std::uint16_t>(rect.width()),
                              static_cast<std::uint16_t>(rect.height())});
    }
    xcb_shape_rectangles(x11->connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_YX_BANDED, static_cast<xcb_window_t>(window.winId()), 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
    xcb_flush(x11->connection());
    return true;
}
