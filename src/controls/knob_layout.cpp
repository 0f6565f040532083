#include "controls/knob_layout.h"

#include <algorithm>

namespace {

constexpr double kMargin = 14;
constexpr double kTextGap = 3;         // between the circle and the text box
constexpr double kLeastKnobWidth = 40; // that must be left beside a text on the right
constexpr double kMostScrollerHeight = 200.0 / 15;

double OuterWidth(const KnobMeasures& m) {
    const double beside = m.control.width() - m.maxTextWidth;
    return m.KnobValueAlign == 3 && beside > kLeastKnobWidth ? beside : m.control.width();
}

void PlaceLabel(KnobLayout& k, int align) {
    const double height = k.textBox.height();
    double left = 0;
    double top = k.textBox.top();
    double width = k.boundary.width();
    switch (align) {
    case 1:
        k.labelOnFace = true;
        k.labelLeft = true;
        top = k.CentreY - 0.5 * height;
        width = k.textBox.width();
        left = k.CentreX - width / 2;
        break;
    case 2:
        top = k.boundary.top() - 1 - height;
        left = k.CentreX - width / 2;
        break;
    case 3:
        top = k.CentreY - height / 2;
        width = k.textBox.width();
        left = k.boundary.left() + k.boundary.width() + 1;
        break;
    default:
        left = k.CentreX - width / 2;
        break;
    }
    k.label = {left, top, width, height};
    if (align >= 1 && align <= 3) {
        k.scroller.translate(0, 1);
    }
}

} // namespace

KnobLayout LayOutKnob(const KnobMeasures& m) {
    KnobLayout k;
    k.control = {QPointF(0, 0), m.control};
    const double width = std::max(0.0, OuterWidth(m) - 2 * kMargin);
    k.boundary = {m.control.width() / 2 - width / 2, kMargin, width, width};
    k.Radius = width / 2;
    k.CentreX = width / 2 + k.boundary.left() - 1;
    k.CentreY = width / 2 + k.boundary.top() - 1;
    k.textBox = {0, k.boundary.bottom() + kTextGap, m.control.width(), m.textHeight};
    k.scroller = {k.boundary.left(), k.textBox.bottom(), width, std::min(0.2 * width, kMostScrollerHeight)};
    PlaceLabel(k, m.KnobValueAlign);
    k.zeroButton = {k.CentreX - m.zeroButton.width() / 2 + 1, k.CentreY - m.zeroButton.height() / 2 + 1};
    return k;
}

double HiddenRight(const KnobLayout& layout) {
    return std::clamp(layout.label.right() - layout.control.right(), 0.0, layout.label.width());
}
