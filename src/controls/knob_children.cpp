#include "controls/knob_children.h"

#include "controls/button_control.h"
#include "controls/fonts.h"
#include "controls/knob_design.h"
#include "controls/knob_painter.h"
#include "controls/knob_scroller.h"
#include "controls/knob_state.h"
#include "controls/rounding.h"

#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

namespace {

constexpr QSize kZeroButtonSize(7, 7);

QRect WholePixels(const QRectF& r) {
    return {RoundToEven(r.left()), RoundToEven(r.top()), RoundToEven(r.width()), RoundToEven(r.height())};
}

void SetColours(QWidget* widget, const QColor& back, const QColor& fore) {
    QPalette palette = widget->palette();
    for (auto role : {QPalette::Window, QPalette::Base}) {
        palette.setColor(role, back);
    }
    for (auto role : {QPalette::WindowText, QPalette::Text}) {
        palette.setColor(role, fore);
    }
    widget->setPalette(palette);
}

template <class Child> Child* Named(const char* name, QWidget& knob) {
    auto* child = new Child(&knob);
    child->setObjectName(QString::fromLatin1(name));
    return child;
}

} // namespace

KnobChildren::KnobChildren(QWidget& knob)
    : KnobValueLabel(Named<QLabel>("KnobValueLabel", knob)),
      KnobValueTextbox(Named<QLineEdit>("KnobValueTextbox", knob)),
      Scroller(Named<KnobScroller>("KnobScroller", knob)),
      ZeroButton(Named<ButtonControl1>("ZeroButton", knob)) {
    KnobValueLabel->setTextFormat(Qt::PlainText);
    KnobValueLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    KnobValueTextbox->setFrame(false);
    KnobValueTextbox->setAlignment(Qt::AlignHCenter);
    ZeroButton->resize(kZeroButtonSize);
    // Of a small knob the pointer reaches under its corners.
    ZeroButton->setMask(QRegion(QRect(QPoint(0, 0), kZeroButtonSize), QRegion::Ellipse));
    ZeroButton->setFocusPolicy(Qt::NoFocus);
    ZeroButton->SetButtonFont(InstrumentFont(QStringLiteral("Small Fonts"), 6));
    ZeroButton->SetButtonForeColor(Qt::white);
    ZeroButton->SetButtonCaptionNudgeY(1);
    ZeroButton->SetButtonDepth(0);
}

void KnobChildren::Place(const KnobDesign& design, const KnobLayout& layout) {
    PlaceText(design, layout);
    PlaceZeroButton(design, layout);
    Scroller->setGeometry(WholePixels(layout.scroller));
    SetColours(Scroller, KnobBack(design, layout), design.KnobTextColor);
}

void KnobChildren::PlaceText(const KnobDesign& design, const KnobLayout& layout) {
    KnobValueTextbox->setFont(design.KnobFont);
    KnobValueTextbox->setGeometry(WholePixels(layout.textBox));
    KnobValueTextbox->setEnabled(!design.KnobValueFormat.isEmpty());
    KnobValueTextbox->setReadOnly(!design.KnobValueEditable);
    SetColours(KnobValueTextbox, design.KnobBorderColor, design.KnobTextColor);
    KnobValueLabel->setFont(design.KnobFont);
    KnobValueLabel->setGeometry(WholePixels(layout.label));
    KnobValueLabel->setContentsMargins(0, 0, RoundToEven(HiddenRight(layout)), 0);
    KnobValueLabel->setAlignment(Qt::AlignVCenter | (layout.labelLeft ? Qt::AlignLeft : Qt::AlignRight));
    // Its back is drawn with the face, so that the tick marks lie over it.
    SetColours(KnobValueLabel, KnobLabelBack(design, layout), design.KnobTextColor);
}

void KnobChildren::PlaceZeroButton(const KnobDesign& design, const KnobLayout& layout) {
    ZeroButton->setVisible(design.KnobZeroButton && design.KnobVisible);
    if (!design.KnobZeroButton) {
        return;
    }
    ZeroButton->move(RoundToEven(layout.zeroButton.x()), RoundToEven(layout.zeroButton.y()));
    ZeroButton->SetButtonFillColor(design.KnobFillColor);
    ZeroButton->SetButtonBackColor(design.KnobFillColor);
    ZeroButton->SetButtonForeColor(design.KnobTextColor);
    ZeroButton->SetButtonDepth(0);
    ZeroButton->SetButtonSunk(false);
}

void KnobChildren::Show(const KnobDesign& design) {
    const bool visible = design.KnobVisible;
    ZeroButton->setVisible(visible && design.KnobZeroButton);
    Scroller->setVisible(visible);
    KnobValueLabel->setVisible(visible && !design.KnobValueEditable);
    KnobValueTextbox->setVisible(visible && design.KnobValueEditable);
}

void KnobChildren::ShowText(const QString& text) {
    KnobValueLabel->setText(text);
    if (KnobValueTextbox->text() != text) {
        KnobValueTextbox->setText(text);
    }
}

void KnobChildren::ShowScroller(const KnobState& state) {
    const QSignalBlocker silent(Scroller);
    Scroller->setRange(state.ScrollerMin(), state.ScrollerMax());
    Scroller->setPageStep(state.LargeChange());
    Scroller->setValue(state.ScrollerValue());
}
