#include "controls/pointer_place.h"

#include "controls/knob_instances.h"
#include "controls/knob_scroller.h"
#include "controls/knob_support.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace {

/// Where the middle of the pointer is drawn, in logical pixels: what gets darker when the pointer comes
/// there.
QPointF DrawnPointer(KnobControl1& knob, int value, int other) {
    knob.SetKnobValue(other);
    const QImage without = knob.grab().toImage();
    knob.SetKnobValue(value);
    const QImage with = knob.grab().toImage();
    double weight = 0;
    QPointF sum;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            const int darker = qGray(without.pixel(x, y)) - qGray(with.pixel(x, y));
            if (darker > 0) {
                weight += darker;
                sum += QPointF(x + 0.5, y + 0.5) * darker;
            }
        }
    }
    return sum / weight / knob.devicePixelRatioF();
}

class PointerAndMouse : public KnobTest {
  protected:
    void make(const KnobInstance& k) {
        QVariantMap bag = k.bag();
        bag["KnobFillColor"] = QColor(230, 230, 230); // the pointer is the darkest thing on it
        bag["KnobBorderColor"] = QColor(230, 230, 230);
        bag["KnobTextColor"] = QColor(230, 230, 230);
        bag["KnobZeroButton"] = false;
        bag["KnobValueFormat"] = "";
        knob->ReadProperties(bag);
        knob->resize(k.size);
        child<KnobScroller>("KnobScroller")->hide(); // its thumb moves as well
    }
};

} // namespace

TEST(PointerPlace, AWholePixelOfTheScreenIsItsMiddle) {
    EXPECT_EQ(PointerPlace({10, 20}, 1), QPointF(10.5, 20.5));
    EXPECT_EQ(PointerPlace({10.5, 20}, 2), QPointF(10.75, 20.25));
    EXPECT_EQ(PointerPlace(QPointF(7, 8) / 1.5, 1.5), QPointF(7.5, 8.5) / 1.5);
    EXPECT_EQ(PointerPlace(QPointF(-1, 0), 1), QPointF(-0.5, 0.5));
}

TEST(PointerPlace, AFractionIsTakenAtItsWord) {
    EXPECT_EQ(PointerPlace({10.25, 20}, 1), QPointF(10.25, 20));
    EXPECT_EQ(PointerPlace({10.25, 20.75}, 2), QPointF(10.25, 20.75));
}

TEST(PointerPlace, APixelIsTheOneThatThePointLiesOn) {
    EXPECT_EQ(PixelUnder({119.5, 0.99}), QPoint(119, 0));
    EXPECT_EQ(PixelUnder({-0.25, 3}), QPoint(-1, 3));
}

TEST_F(PointerAndMouse, AClickOnThePointerLeavesTheKnobWhereItIsAtEveryScale) {
    for (const KnobInstance& k : KnobInstances()) {
        make(k);
        const int range = k.max - k.min;
        const int step = std::max(1, range / 26);
        for (int value = k.min + 1; value < k.max; value += step) {
            const int other = value < k.min + range / 2 ? k.max : k.min;
            const QPointF tip = DrawnPointer(*knob, value, other);
            mouse(QEvent::MouseButtonPress, tip, Qt::LeftButton, Qt::LeftButton);
            mouse(QEvent::MouseButtonRelease, tip, Qt::LeftButton, Qt::NoButton);
            // The finest knob has more steps than the picture can show.
            EXPECT_NEAR(knob->KnobValue(), value, range > 1000 ? range / 400 : 0) << k << " at " << value;
        }
    }
}

TEST_F(PointerAndMouse, AMouseThatCountsPixelsIsMeasuredFromTheSameCentreAtEveryScale) {
    KnobInstance k = KnobInstances().back();
    k.start = -45;
    k.stop = 225;
    make(k);
    // The knob's middle falls on the middle of a pixel of the screen where width times scale is odd; there
    // the four ways along the axes are the exact angles.
    const double scale = knob->devicePixelRatioF();
    const QPointF middle(k.size.width() / 2.0, 14 + (k.size.width() - 28) / 2.0);
    const QPointF corner = middle - QPointF(0.5, 0.5) / scale;
    for (const auto& [way, p] :
         {std::pair{QPointF(-20, 0), 45 / 270.0}, std::pair{QPointF(0, -20), 135 / 270.0},
          std::pair{QPointF(20, 0), 225 / 270.0}}) {
        const QPointF exact = corner + way;
        const QPointF pixel(std::round(exact.x() * scale) / scale, std::round(exact.y() * scale) / scale);
        const double off = std::max(std::abs(pixel.x() - exact.x()), std::abs(pixel.y() - exact.y()));
        mouse(QEvent::MouseButtonPress, pixel, Qt::LeftButton, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, pixel, Qt::LeftButton, Qt::NoButton);
        const double tolerance = 1.05 * off / 20 / (1.5 * std::numbers::pi) * 65535 + 1;
        EXPECT_NEAR(knob->KnobValue(), p * 65535 - 32768, tolerance) << way.x() << ", " << way.y();
    }
}
