#include "controls/panel_picture.h"

#include "controls/colour.h"
#include "controls/panel_design.h"

#include <QPainter>

namespace {

using Geometry = PanelGeometry;

constexpr double kBodyRadius = 14;
constexpr double kHeaderRadius = 7;
constexpr double kWindowRadius = 6;
constexpr double kArmInset = 9; ///< of the arm from the header's height

const ControlDesign* FindRow(const FormDesign& form, const QString& name) {
    for (const ControlDesign& row : form.controls) {
        if (ControlName(row.name, row.index) == name) {
            return &row;
        }
    }
    return nullptr;
}

QRectF HeaderRect(const FormDesign& form) {
    const ControlDesign* header = FindRow(form, QStringLiteral("Image1"));
    return header == nullptr ? QRectF() : QRectF(header->place);
}

QColor HeaderColour(const FormDesign& form) {
    const ControlDesign* name = FindRow(form, QStringLiteral("TabName"));
    return ToQColor(name == nullptr ? kPanelBack : name->back);
}

QPainterPath Rounded(const QRectF& rect, double radius) {
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

/// The face with its rails, and the arm that carries the header through the window while the panel is closed.
QPainterPath BodyOutline(const FormDesign& form) {
    constexpr double kBeyond = 2 * kBodyRadius; // past the left edge, where corners are not to be round
    const QPainterPath whole =
        Rounded({-kBeyond, 0, Geometry::kBodyRight + kBeyond, double(form.size.height())}, kBodyRadius);
    const QPainterPath window = Rounded({-kBeyond, Geometry::kRail, Geometry::kBodyLeft + kBeyond,
                                         double(form.size.height() - 2 * Geometry::kRail)},
                                        kWindowRadius);
    const QRectF header = HeaderRect(form);
    QPainterPath arm;
    arm.addRect(-kBeyond, header.top() + kArmInset, Geometry::kBodyLeft + kBeyond + 2,
                header.height() - 2 * kArmInset);
    return whole.subtracted(window).united(arm);
}

QPainterPath HeaderOutline(const FormDesign& form) {
    // Starts inside the body, so that both grow together.
    return Rounded(HeaderRect(form).adjusted(-2 * kHeaderRadius, 0, 0, 0), kHeaderRadius);
}

/// Fills a piece of sheet and gives it a dark rim, lit and shaded edges.
void DrawSheet(QPainter& painter, const QPainterPath& outline, const QColor& colour) {
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    painter.fillPath(outline, colour);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(255, 255, 255, 150), 1.6));
    painter.drawPath(outline.translated(1.3, 1.3));
    painter.setPen(QPen(QColor(0, 0, 0, 80), 1.6));
    painter.drawPath(outline.translated(-1.3, -1.3));
    painter.setPen(QPen(colour.darker(250), 2)); // the outer half is clipped
    painter.drawPath(outline);
    painter.restore();
}

/// Lines along the upper and left, and along the lower and right edges of a rounded rectangle.
void Bevel(QPainter& painter, const QRectF& rect, double radius, const QColor& lit, const QColor& shaded) {
    painter.setBrush(Qt::NoBrush);
    QLinearGradient edge(rect.topLeft(), rect.bottomRight());
    edge.setColorAt(0, lit);
    edge.setColorAt(0.45, lit);
    edge.setColorAt(0.55, shaded);
    edge.setColorAt(1, shaded);
    painter.setPen(QPen(QBrush(edge), 1));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

void DrawBody(QPainter& painter, const FormDesign& form) {
    const QPainterPath outline = BodyOutline(form);
    DrawSheet(painter, outline, ToQColor(kPanelBack));
    // The shadow of the main window falls on what comes out from under it.
    QLinearGradient shadow(0, 0, Geometry::kTuck + 8, 0);
    shadow.setColorAt(0, QColor(0, 0, 0, 120));
    shadow.setColorAt(1, QColor(0, 0, 0, 0));
    painter.fillPath(outline, shadow);
}

void DrawHeader(QPainter& painter, const FormDesign& form) {
    const QRectF header = HeaderRect(form);
    painter.save();
    painter.setClipRect(header.adjusted(-1, 0, 0, 0));
    DrawSheet(painter, HeaderOutline(form), HeaderColour(form));
    // A fold where the header leaves the body.
    painter.fillRect(QRectF(header.left() - 1, header.top(), 1, header.height()), QColor(0, 0, 0, 120));
    painter.fillRect(QRectF(header.left(), header.top() + 1, 1, header.height() - 2),
                     QColor(255, 255, 255, 110));
    painter.restore();
}

/// A raised plate of the knob's own ground, so that the square control grows into it.
void DrawPlate(QPainter& painter, const ControlDesign& row) {
    const QColor plate = ToQColor(row.fill);
    constexpr double kPlateRadius = 3; // no rounder, or the control's corners would stand out
    const QRectF rect = QRectF(row.place).adjusted(-2, -2, 2, 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 60));
    painter.drawRoundedRect(rect.translated(1, 1.5), kPlateRadius, kPlateRadius);
    painter.setBrush(plate);
    painter.drawRoundedRect(rect, kPlateRadius, kPlateRadius);
    Bevel(painter, rect, kPlateRadius, plate.lighter(125), plate.darker(150));
}

void DrawGroupFrame(QPainter& painter, const ControlDesign& row) {
    const QRectF rect = QRectF(row.place).adjusted(-2, -2, 2, 2);
    const QColor face = ToQColor(kPanelBack);
    Bevel(painter, rect, 5, face.darker(140), face.lighter(122));
    Bevel(painter, rect.adjusted(1, 1, -1, -1), 4, face.lighter(122), face.darker(140));
}

void DrawPanel(QPainter& painter, const FormDesign& form) {
    // Beyond the outline the rim's colour runs on.
    painter.fillRect(QRectF({0, 0}, form.size), ToQColor(kPanelBack).darker(250));
    painter.fillRect(HeaderRect(form), HeaderColour(form).darker(250));
    DrawBody(painter, form);
    DrawHeader(painter, form);
    for (const ControlDesign& row : form.controls) {
        if (row.kind == ControlKind::Knob) {
            DrawPlate(painter, row);
        } else if (row.kind == ControlKind::Frame) {
            DrawGroupFrame(painter, row);
        }
    }
}

void DrawDialog(QPainter& painter, const QRectF& place, const FormDesign& form) {
    const QColor sheet = ToQColor(form.back);
    painter.fillRect(place, sheet);
    Bevel(painter, place, 0, sheet.darker(260), sheet.darker(260));
    Bevel(painter, place.adjusted(1, 1, -1, -1), 0, sheet.lighter(150), sheet.darker(150));
    QRect onPlate;
    QRect onSheet;
    Colour plateColour = form.back;
    for (const ControlDesign& row : form.controls) {
        if (row.kind == ControlKind::Button) {
            (row.back == form.back ? onSheet : onPlate) |= row.place;
            plateColour = row.back == form.back ? plateColour : row.back;
        }
    }
    constexpr int kPad = 10;
    const QColor plate = ToQColor(plateColour);
    const QRectF plateRect = QRectF(onPlate).adjusted(-kPad, -kPad, kPad, kPad);
    DrawSheet(painter, Rounded(plateRect, 8), plate);
    const QRectF frame = QRectF(onSheet).adjusted(-kPad, -kPad, kPad, kPad);
    Bevel(painter, frame, 8, sheet.darker(160), sheet.lighter(135));
    Bevel(painter, frame.adjusted(1, 1, -1, -1), 7, sheet.lighter(135), sheet.darker(160));
}

} // namespace

FaceDrawing DialogDrawing(const FormDesign& form) {
    return [form](QPainter& painter, const QRectF& place) { DrawDialog(painter, place, form); };
}

QPainterPath PanelOutline(const FormDesign& form) {
    QPainterPath picture;
    picture.addRect(QRectF({0, 0}, form.size));
    return BodyOutline(form).united(HeaderOutline(form)).intersected(picture);
}

FaceDrawing PanelDrawing(const FormDesign& form) {
    return [form](QPainter& painter, const QRectF&) { DrawPanel(painter, form); };
}

QImage PanelShapePicture(const FormDesign& form) {
    QImage art(form.size, QImage::Format_RGB32);
    QPainter artist(&art);
    artist.setRenderHint(QPainter::Antialiasing);
    DrawPanel(artist, form);
    artist.end();

    QImage shape(form.size, QImage::Format_RGB32);
    shape.fill(ToQColor(kSkinKey));
    QPainter cutter(&shape); // no antialiasing: a pixel is inside or outside
    cutter.setPen(Qt::NoPen);
    cutter.setBrush(QBrush(art));
    cutter.drawPath(PanelOutline(form));
    return shape;
}
