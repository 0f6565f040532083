#include "controls/face_style.h"

#include "controls/fonts.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>

namespace {

const QColor kInk(0x20, 0x1C, 0x18);
const QColor kField(0xEE, 0xEC, 0xE4);
const QColor kLampOff(0x3C, 0x38, 0x30);
const QColor kLampOn(0x4C, 0xF0, 0x5A);
const QColor kFocus(0x1E, 0x50, 0x96);

constexpr int kLamp = 14;
constexpr int kComboArrow = 14;
constexpr int kInset = 8; ///< of a check box from the edge of its own ground

QColor Dimmed(QColor colour, const QStyleOption* option) {
    if (!(option->state & QStyle::State_Enabled)) {
        colour.setAlpha(110);
    }
    return colour;
}

/// The socket of a lamp: dark above, lit below, as a hole that light falls into.
void DrawSocket(QPainter& painter, const QPainterPath& outline, const QStyleOption* option) {
    const QRectF rect = outline.boundingRect();
    QLinearGradient rim(rect.topLeft(), rect.bottomLeft());
    rim.setColorAt(0, QColor(0x5C, 0x56, 0x48));
    rim.setColorAt(1, QColor(0xF6, 0xF4, 0xEC));
    painter.setBrush(Dimmed(kLampOff, option));
    painter.setPen(QPen(QBrush(rim), 1.2));
    painter.drawPath(outline);
    if (option->state & QStyle::State_HasFocus && option->state & QStyle::State_KeyboardFocusChange) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(kFocus, 1.4));
        painter.drawPath(outline);
    } else if (option->state & QStyle::State_MouseOver) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(255, 255, 255, 150), 1));
        painter.drawPath(outline);
    }
}

QRectF LampRect(const QStyleOption* option) {
    const QRectF rect(option->rect);
    const double side = std::min(rect.width(), rect.height()) - 1;
    return {rect.center().x() - side / 2, rect.center().y() - side / 2, side, side};
}

void DrawOptionLamp(QPainter& painter, const QStyleOption* option) {
    const QRectF lamp = LampRect(option);
    QPainterPath outline;
    outline.addEllipse(lamp);
    DrawSocket(painter, outline, option);
    if (option->state & QStyle::State_On) {
        const QRectF bulb = lamp.adjusted(3, 3, -3, -3);
        QRadialGradient light(bulb.center() - QPointF(1, 1), bulb.width() * 0.7);
        light.setColorAt(0, Dimmed(QColor(0xE6, 0xFF, 0xE8), option));
        light.setColorAt(0.6, Dimmed(kLampOn, option));
        light.setColorAt(1, Dimmed(kLampOn.darker(140), option));
        painter.setPen(Qt::NoPen);
        painter.setBrush(light);
        painter.drawEllipse(bulb);
    }
}

void DrawCheckLamp(QPainter& painter, const QStyleOption* option) {
    const QRectF lamp = LampRect(option);
    QPainterPath outline;
    outline.addRoundedRect(lamp, 3, 3);
    DrawSocket(painter, outline, option);
    if (option->state & QStyle::State_On) {
        const double u = lamp.width() / 13;
        QPainterPath tick(lamp.topLeft() + QPointF(3 * u, 6.6 * u));
        tick.lineTo(lamp.topLeft() + QPointF(5.6 * u, 9.4 * u));
        tick.lineTo(lamp.topLeft() + QPointF(10 * u, 3.6 * u));
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Dimmed(kLampOn, option), 2.2 * u, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(tick);
    }
}

/// A field let into the panel.
void DrawField(QPainter& painter, const QRectF& rect, const QColor& fill, const QStyleOption* option) {
    QLinearGradient rim(rect.topLeft(), rect.bottomLeft());
    rim.setColorAt(0, QColor(0x5C, 0x56, 0x48));
    rim.setColorAt(1, QColor(0xF6, 0xF4, 0xEC));
    painter.setBrush(fill);
    painter.setPen(QPen(QBrush(rim), 1));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.fillRect(QRectF(rect.left() + 2, rect.top() + 1, rect.width() - 4, 1), QColor(0, 0, 0, 40));
    if (option->state & QStyle::State_HasFocus) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(kFocus, 1));
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    }
}

void DrawCombo(QPainter& painter, const QStyleOptionComboBox* option) {
    const QRectF rect(option->rect);
    DrawField(painter, rect, option->palette.color(QPalette::Base), option);
    const QPointF middle(rect.right() - kComboArrow / 2.0 - 1, rect.center().y() + 0.5);
    const double reach = 3.2;
    QPainterPath arrow(middle + QPointF(-reach, -reach * 0.55));
    arrow.lineTo(middle + QPointF(0, reach * 0.65));
    arrow.lineTo(middle + QPointF(reach, -reach * 0.55));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Dimmed(kInk, option), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(arrow);
}

class Antialiased {
  public:
    explicit Antialiased(QPainter* painter) : painter_(painter) {
        painter_->save();
        painter_->setRenderHint(QPainter::Antialiasing);
    }
    ~Antialiased() { painter_->restore(); }
    Antialiased(const Antialiased&) = delete;
    Antialiased& operator=(const Antialiased&) = delete;

  private:
    QPainter* painter_;
};

} // namespace

FaceStyle::FaceStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void FaceStyle::polish(QPalette& palette) {
    palette = QPalette(QColor(0xD6, 0xD2, 0xC4));
    palette.setColor(QPalette::Base, kField);
    palette.setColor(QPalette::AlternateBase, QColor(0xE2, 0xDF, 0xD4));
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, kInk);
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x7A, 0x6C));
    }
    palette.setColor(QPalette::Highlight, QColor(0x2A, 0x5A, 0x9C));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0x26, 0x28, 0x2C));
    palette.setColor(QPalette::ToolTipText, QColor(0xF2, 0xF2, 0xEE));
    palette.setColor(QPalette::PlaceholderText, QColor(0x70, 0x6A, 0x5E));
}

void FaceStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    const Antialiased guard(painter);
    switch (element) {
    case PE_IndicatorRadioButton:
        DrawOptionLamp(*painter, option);
        return;
    case PE_IndicatorCheckBox:
        DrawCheckLamp(*painter, option);
        return;
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
        DrawField(*painter, option->rect, option->palette.color(QPalette::Base), option);
        return;
    case PE_Frame:
        if (widget != nullptr && widget->inherits("QAbstractScrollArea")) {
            DrawField(*painter, option->rect, option->palette.color(QPalette::Base), option);
            return;
        }
        break;
    default:
        break;
    }
    painter->setRenderHint(QPainter::Antialiasing, false);
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void FaceStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    if (control == CC_ComboBox) {
        if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
            const Antialiased guard(painter);
            DrawCombo(*painter, combo);
            return;
        }
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void FaceStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    if (element == CE_ComboBoxLabel) {
        if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
            const QRect text = proxy()
                                   ->subControlRect(CC_ComboBox, combo, SC_ComboBoxEditField, widget)
                                   .adjusted(1, 0, 0, 0);
            painter->save();
            painter->setPen(combo->palette.color(QPalette::Text));
            painter->setClipRect(text);
            painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter, combo->currentText);
            painter->restore();
            return;
        }
    }
    if (element == CE_CheckBox && widget != nullptr && widget->autoFillBackground()) {
        if (const auto* box = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            QStyleOptionButton inset(*box); // on a ground of its own it does not stick to the edge of it
            inset.rect.adjust(kInset, 0, 0, 0);
            QProxyStyle::drawControl(element, &inset, painter, widget);
            return;
        }
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

int FaceStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return kLamp;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 6;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FaceStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    if (hint == SH_ComboBox_Popup) {
        return 0; // a plain list under the field, not a menu over it
    }
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QRect FaceStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    if (control == CC_ComboBox) {
        const QRect rect = option->rect;
        if (part == SC_ComboBoxEditField) {
            return rect.adjusted(5, 2, -kComboArrow - 2, -2);
        }
        if (part == SC_ComboBoxArrow) {
            return {rect.right() - kComboArrow, rect.top(), kComboArrow + 1, rect.height()};
        }
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

void ApplyFaceStyle(QApplication& application) {
    auto* style = new FaceStyle; // the application owns it
    QApplication::setStyle(style);
    QPalette palette;
    style->polish(palette);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    application.setFont(InstrumentFont(QStringLiteral("Arial"), 8.25));
    QToolTip::setFont(InstrumentFont(QStringLiteral("Arial"), 8.25));
}
