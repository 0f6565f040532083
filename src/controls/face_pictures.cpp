#include "controls/face_pictures.h"

#include "controls/colour.h"
#include "controls/fonts.h"
#include "controls/panel_picture.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace {

/// A handle as a house-shaped flag whose tip points up; the caller turns it.
void DrawHandle(QPainter& painter, QSizeF size, int number, double textAngle) {
    const double w = size.width();
    const double h = size.height();
    const double roof = w / 2 - 1;
    QPainterPath flag;
    flag.moveTo(w / 2, 0.5);
    flag.lineTo(w - 0.5, roof);
    flag.lineTo(w - 0.5, h - 0.5);
    flag.lineTo(0.5, h - 0.5);
    flag.lineTo(0.5, roof);
    flag.closeSubpath();
    QLinearGradient shade(0, 0, w, 0);
    shade.setColorAt(0, QColor(0xFF, 0xFF, 0xFF));
    shade.setColorAt(1, QColor(0xB4, 0xB8, 0xC0));
    painter.setPen(QPen(QColor(0x18, 0x18, 0x1C), 1));
    painter.setBrush(shade);
    painter.drawPath(flag);

    const QRectF text(0, roof - 2.5, w, h - roof + 2);
    painter.save();
    painter.translate(text.center());
    painter.rotate(textAngle);
    painter.setFont(InstrumentFont(QStringLiteral("Arial"), 6.75, true));
    painter.setPen(Qt::black);
    painter.drawText(QRectF(-10, -10, 20, 20), Qt::AlignCenter, QString::number(number));
    painter.restore();
}

FaceDrawing TimeHandle(int number) {
    return [number](QPainter& painter, const QRectF& place) { DrawHandle(painter, place.size(), number, 0); };
}

FaceDrawing LevelHandle(int number) {
    return [number](QPainter& painter, const QRectF& place) {
        painter.translate(0, place.height());
        painter.rotate(-90);
        DrawHandle(painter, place.size().transposed(), number, 90);
    };
}

void DrawSkinColour(QPainter& painter, const QRectF& place) {
    const QRectF disc = place.adjusted(1.5, 1.5, -1.5, -1.5);
    const QColor petals[] = {QColor(0xD8, 0xD4, 0xC8), QColor(0x3C, 0x5C, 0x94), QColor(0x2A, 0x2A, 0x2E),
                             QColor(0x9A, 0x9E, 0xA4)};
    painter.setPen(Qt::NoPen);
    int start = 45 * 16;
    for (const QColor& petal : petals) {
        painter.setBrush(petal);
        painter.drawPie(disc, start, 90 * 16);
        start += 90 * 16;
    }
    QLinearGradient gloss(disc.topLeft(), disc.bottomRight());
    gloss.setColorAt(0, QColor(255, 255, 255, 110));
    gloss.setColorAt(0.5, QColor(255, 255, 255, 0));
    gloss.setColorAt(1, QColor(0, 0, 0, 90));
    painter.setBrush(gloss);
    painter.drawEllipse(disc);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x10, 0x10, 0x12), 1.5));
    painter.drawEllipse(disc);
    painter.setPen(QPen(QColor(255, 255, 255, 90), 1));
    painter.drawEllipse(disc.adjusted(1.5, 1.5, -1.5, -1.5));
}

void DrawWebLink(QPainter& painter, const QRectF& place) {
    const QRectF key = place.adjusted(0.5, 0.5, -0.5, -0.5);
    QLinearGradient shade(key.topLeft(), key.bottomLeft());
    shade.setColorAt(0, QColor(0x3E, 0x6E, 0xA6));
    shade.setColorAt(1, QColor(0x24, 0x48, 0x74));
    painter.setPen(QPen(QColor(0x18, 0x2C, 0x46), 1));
    painter.setBrush(shade);
    painter.drawRoundedRect(key, 4, 4);
    painter.setFont(InstrumentFont(QStringLiteral("Arial"), 8.25, true));
    painter.setPen(Qt::white);
    painter.drawText(place, Qt::AlignCenter, QStringLiteral("web"));
}

void DrawSplash(QPainter& painter, const QRectF& place) {
    QLinearGradient shade(place.topLeft(), place.bottomRight());
    shade.setColorAt(0, QColor(0x2C, 0x38, 0x48));
    shade.setColorAt(1, QColor(0x10, 0x14, 0x1C));
    painter.fillRect(place, shade);
    painter.setPen(QPen(QColor(255, 255, 255, 14), 1));
    for (int x = 20; x < place.width(); x += 20) {
        painter.drawLine(QPointF(x + 0.5, 0), QPointF(x + 0.5, place.height()));
    }
    for (int y = 20; y < place.height(); y += 20) {
        painter.drawLine(QPointF(0, y + 0.5), QPointF(place.width(), y + 0.5));
    }
    // Two traces in the colours of the first channels, along the lower edge.
    const QColor colours[] = {QColor(0xFF, 0xFF, 0x00, 150), QColor(0x1B, 0xE2, 0xFF, 120)};
    const double middle = place.height() * 0.76;
    for (int trace = 0; trace < 2; ++trace) {
        QPainterPath path;
        for (int x = 0; x <= place.width(); x += 2) {
            const double t = x / place.width();
            const double swell = std::exp(-std::pow((t - 0.68) / 0.2, 2));
            const double y = middle - 34 * swell * std::sin(2 * std::numbers::pi * (7 * t + 0.25 * trace));
            x == 0 ? path.moveTo(x, y) : path.lineTo(x, y);
        }
        painter.setPen(QPen(colours[trace], 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(path);
    }
    painter.setPen(QPen(QColor(255, 255, 255, 60), 1));
    painter.drawRect(place.adjusted(0.5, 0.5, -0.5, -0.5));
}

void DrawFigures(QPainter& painter, const QRectF& place) {
    QLinearGradient shade(place.topLeft(), place.bottomLeft());
    shade.setColorAt(0, QColor(0x4A, 0x4D, 0x52));
    shade.setColorAt(1, QColor(0x30, 0x32, 0x36));
    painter.fillRect(place, shade);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x10, 0x11, 0x13), 1));
    painter.drawRect(place.adjusted(0.5, 0.5, -0.5, -0.5));
}

} // namespace

FaceDrawing FindDrawing(const QString& name, const FormDesign& form) {
    const int number = name.isEmpty() ? 0 : name.back().digitValue();
    if (name.startsWith(QLatin1String("timeCursor"))) {
        return TimeHandle(number);
    }
    if (name.startsWith(QLatin1String("levelCursor"))) {
        return LevelHandle(number);
    }
    if (name == QLatin1String("skinColour")) {
        return DrawSkinColour;
    }
    if (name == QLatin1String("webLink")) {
        return DrawWebLink;
    }
    if (name == QLatin1String("splash")) {
        return DrawSplash;
    }
    if (name == QLatin1String("dialog")) {
        return DialogDrawing(form);
    }
    if (name == QLatin1String("figures")) {
        return DrawFigures;
    }
    if (name == QLatin1String("panel")) {
        return PanelDrawing(form);
    }
    return {};
}
