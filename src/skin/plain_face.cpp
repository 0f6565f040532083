#include "skin/plain_face.h"

#include "controls/colour.h"
#include "skin/skin_colour.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr Colour kPlate = 0x3C3C3C; ///< dark enough for all the texts that stand on it
constexpr double kCorner = 10;

} // namespace

QPixmap PlainFace(QSize size) {
    QPixmap face(size);
    face.fill(ToQColor(kSkinKey));
    QPainter painter(&face);
    QPainterPath outline;
    outline.addRoundedRect(QRectF(QPointF(0, 0), size), kCorner, kCorner);
    painter.setClipPath(outline);
    painter.fillRect(face.rect(), ToQColor(kPlate));
    painter.setPen(ToQColor(Brightened(kPlate)));
    painter.drawLine(0, 0, size.width(), 0);
    painter.drawLine(0, 0, 0, size.height());
    return face;
}
