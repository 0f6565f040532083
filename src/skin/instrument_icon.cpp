#include "skin/instrument_icon.h"

#include "controls/colour.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <numbers>

namespace {

constexpr int kSides[] = {16, 22, 24, 32, 48, 64, 128, 256};
constexpr Colour kTraces[] = {0x00FFFF, 0xFFE21B}; // of the first two channels

QPainterPath Wave(const QRectF& screen, double periods, double phase, double height) {
    constexpr int kSteps = 96;
    QPainterPath path;
    for (int i = 0; i <= kSteps; ++i) {
        const double part = double(i) / kSteps;
        const double y = std::sin(2 * std::numbers::pi * (periods * part + phase));
        const QPointF at(screen.left() + part * screen.width(),
                         screen.center().y() - 0.5 * height * screen.height() * y);
        i == 0 ? path.moveTo(at) : path.lineTo(at);
    }
    return path;
}

} // namespace

QPixmap InstrumentIconAt(int side) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = side / 32.0;

    QLinearGradient metal(0, 0, 0, side);
    metal.setColorAt(0, QColor(0xE4, 0xE8, 0xEC));
    metal.setColorAt(1, QColor(0x70, 0x7A, 0x84));
    const double rim = std::max(1.0, unit * 0.8);
    painter.setPen(QPen(QColor(0x30, 0x36, 0x3C), rim));
    painter.setBrush(metal);
    painter.drawRoundedRect(QRectF(rim / 2, rim / 2, side - rim, side - rim), 5 * unit, 5 * unit);

    const QRectF screen = QRectF(0, 0, side, side).adjusted(4 * unit, 4 * unit, -4 * unit, -4 * unit);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x06, 0x14, 0x1A));
    painter.drawRoundedRect(screen, 2 * unit, 2 * unit);
    painter.setClipRect(screen);
    if (side >= 32) { // a grid would only blur the small ones
        painter.setPen(QPen(QColor(0x2C, 0x4C, 0x50), 0.6 * unit));
        for (int i = 1; i < 4; ++i) {
            const double x = screen.left() + screen.width() * i / 4;
            const double y = screen.top() + screen.height() * i / 4;
            painter.drawLine(QPointF(x, screen.top()), QPointF(x, screen.bottom()));
            painter.drawLine(QPointF(screen.left(), y), QPointF(screen.right(), y));
        }
    }
    painter.setBrush(Qt::NoBrush);
    const double pen = std::max(1.4, 1.8 * unit);
    painter.setPen(QPen(ToQColor(kTraces[1]), pen));
    painter.drawPath(Wave(screen, 1, 0.25, 0.45));
    painter.setPen(QPen(ToQColor(kTraces[0]), pen));
    painter.drawPath(Wave(screen, 1.5, 0, 0.75));
    return pixmap;
}

QIcon InstrumentIcon() {
    QIcon icon;
    for (const int side : kSides) {
        icon.addPixmap(InstrumentIconAt(side));
    }
    return icon;
}
