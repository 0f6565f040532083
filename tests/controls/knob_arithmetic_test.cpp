#include "controls/knob_arithmetic.h"

#include "controls/knob_instances.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr float kFloatInf = std::numeric_limits<float>::infinity();

/// The angle of the point at that many degrees, as the mouse would report it.
float AngleAt(int degrees) {
    const QPointF p = knob::PointAt({0, 0}, 20, degrees);
    return knob::AngleOf(p.x(), p.y());
}

int Into360(int degrees) {
    return ((degrees % 360) + 360) % 360;
}

} // namespace

TEST(KnobAngles, SweepOfTheInstances) {
    for (const KnobInstance& k : KnobInstances()) {
        EXPECT_EQ(knob::Sweep(k.start, k.stop), k.sweep) << k;
    }
    EXPECT_EQ(knob::Sweep(-45, -135), 270);
    EXPECT_EQ(knob::Sweep(0, 270), 270);
}

TEST(KnobAngles, SweepIsReducedOnlyOnce) {
    EXPECT_EQ(knob::Sweep(30, 30), 360); // no span at all
    EXPECT_EQ(knob::Sweep(360, 0), 0);   // a span of exactly 360 stays
    EXPECT_EQ(knob::Sweep(400, 0), 320); // 40
    EXPECT_EQ(knob::Sweep(800, 0), -80); // 440
    EXPECT_EQ(knob::Sweep(0, 800), 800); // -440
    EXPECT_EQ(knob::Sweep(std::numeric_limits<int>::max(), std::numeric_limits<int>::min()),
              std::numeric_limits<int>::min());
}

TEST(KnobAngles, ZeroPointsLeftAndAnglesGrowClockwise) {
    const auto at = [](double angle) { return knob::PointAt({100, 50}, 10, angle); };
    EXPECT_NEAR(at(0).x(), 90, 1e-5);
    EXPECT_NEAR(at(0).y(), 50, 1e-5);
    EXPECT_NEAR(at(90).x(), 100, 1e-5);
    EXPECT_NEAR(at(90).y(), 40, 1e-5);
    EXPECT_NEAR(at(180).x(), 110, 1e-5);
    EXPECT_NEAR(at(270).y(), 60, 1e-5);
    EXPECT_NEAR(at(-45).x(), 100 - 10 * std::sqrt(0.5), 1e-5);
    EXPECT_NEAR(at(-45).y(), 50 + 10 * std::sqrt(0.5), 1e-5);
}

TEST(KnobAngles, OfAMousePoint) {
    EXPECT_EQ(knob::AngleOf(-5, 0), 0);
    EXPECT_EQ(knob::AngleOf(0, -5), 90);
    EXPECT_EQ(knob::AngleOf(5, 0), 180);
    EXPECT_EQ(knob::AngleOf(0, 5), 270);
    EXPECT_EQ(knob::AngleOf(0, 0), 180);
    EXPECT_EQ(knob::AngleOf(-0.0, -0.0), 180);
    EXPECT_EQ(knob::AngleOf(-3.5, -3.5), 45);
    EXPECT_EQ(knob::AngleOf(3.5, -3.5), 135);
    EXPECT_EQ(knob::AngleOf(3.5, 3.5), 225);
    EXPECT_EQ(knob::AngleOf(-3.5, 3.5), 315);
    EXPECT_NEAR(knob::AngleOf(-1e-300, 1e300), 270, 1e-4);
}

TEST(KnobAngles, AngleOfUndoesPointAt) {
    for (int degrees = 0; degrees < 360; ++degrees) {
        EXPECT_NEAR(AngleAt(degrees), degrees, 1e-4);
    }
}

TEST(KnobPosition, EveryDegreeOfEveryInstance) {
    for (const KnobInstance& k : KnobInstances()) {
        for (int turned = 1; turned <= 360; ++turned) {
            const auto angle = static_cast<float>(Into360(k.start + turned));
            EXPECT_FLOAT_EQ(knob::PositionOf(angle, k.start, k.sweep), turned / static_cast<float>(k.sweep))
                << k << " at " << turned;
        }
    }
}

TEST(KnobPosition, TheExactStartAngleBelongsToTheDeadArc) {
    for (const KnobInstance& k : KnobInstances()) {
        const auto start = static_cast<float>(Into360(k.start));
        EXPECT_EQ(knob::PositionOf(start, k.start, k.sweep), 360.0F / static_cast<float>(k.sweep)) << k;
    }
    EXPECT_EQ(knob::PositionOf(knob::AngleOf(-7.5, 7.5), -45, 270), 360.0F / 270.0F);
}

TEST(KnobPosition, WithoutASweepEveryAngleIsDead) {
    EXPECT_EQ(knob::PositionOf(10, 360, 0), kFloatInf);
    EXPECT_EQ(knob::PositionOf(0, 360, 0), kFloatInf);
}

TEST(KnobDirection, ComparesWithTheLastAngle) {
    EXPECT_FALSE(knob::DirectionIncreasing(100, 0)); // no drag under way
    EXPECT_TRUE(knob::DirectionIncreasing(100, 99));
    EXPECT_TRUE(knob::DirectionIncreasing(100, 100));
    EXPECT_FALSE(knob::DirectionIncreasing(99, 100));
    EXPECT_FALSE(knob::DirectionIncreasing(359, 1)); // down over the wrap
    EXPECT_TRUE(knob::DirectionIncreasing(270, 89)); // not yet beyond
    EXPECT_TRUE(knob::DirectionIncreasing(271, 90));
    EXPECT_FALSE(knob::DirectionIncreasing(271, 89));
    EXPECT_FALSE(knob::DirectionIncreasing(1, 359)); // up over the wrap is left as it is
}

namespace {

constexpr bool kUp = true;
constexpr bool kDown = false;

struct Held {
    float p;
    knob::Stops stops;
};

Held Hold(float p, bool up, knob::Stops stops, bool dragging = true, bool firstCall = false) {
    const float held = knob::HoldAtStops(p, up, firstCall, dragging, stops);
    return {held, stops};
}

constexpr knob::Stops kFree{};
constexpr knob::Stops kLow{.StuckLow = true};
constexpr knob::Stops kHigh{.StuckHigh = true};

void ExpectHeld(const Held& held, float p, knob::Stops stops) {
    EXPECT_EQ(held.p, p);
    EXPECT_EQ(held.stops, stops);
}

} // namespace

TEST(KnobStops, ReturnsThePositionUnchanged) {
    ExpectHeld(Hold(1.3F, kUp, kFree, true, true), 1.3F, kFree); // first call
    ExpectHeld(Hold(1.3F, kUp, kHigh, true, true), 1.3F, kHigh);
    ExpectHeld(Hold(0.4F, kUp, kFree), 0.4F, kFree);
    ExpectHeld(Hold(1.0F, kDown, kFree), 1.0F, kFree);
    ExpectHeld(Hold(0.7F, kUp, kHigh, false), 0.7F, kHigh); // no drag
    ExpectHeld(Hold(0.7F, kUp, kLow, false), 0.7F, kLow);
    ExpectHeld(Hold(1.0F, kUp, kLow, false), 1.0F, kLow);
}

TEST(KnobStops, TheDeadArcSticksAtTheEndThatItWasEnteredFrom) {
    ExpectHeld(Hold(1.1F, kUp, kFree), 1, kHigh);
    ExpectHeld(Hold(1.3F, kDown, kFree), 0, kLow);
    ExpectHeld(Hold(kFloatInf, kUp, kFree), 1, kHigh);
    ExpectHeld(Hold(1.1F, kUp, kFree, false), 1, kHigh); // in the dead arc the drag need not have begun
}

TEST(KnobStops, AStuckEndHoldsUntilTheMouseComesBackItsOwnWay) {
    ExpectHeld(Hold(0.9F, kUp, kHigh), 1, kHigh);   // wrong way
    ExpectHeld(Hold(0.5F, kDown, kHigh), 1, kHigh); // not above a half
    ExpectHeld(Hold(0.2F, kDown, kHigh), 1, kHigh);
    ExpectHeld(Hold(1.0F, kDown, kHigh), 1, kHigh); // not below the end
    ExpectHeld(Hold(0.9F, kDown, kHigh), 0.9F, kFree);
    ExpectHeld(Hold(0.51F, kDown, kHigh), 0.51F, kFree);
    ExpectHeld(Hold(1.2F, kUp, kHigh), 1, kHigh);
    ExpectHeld(Hold(1.2F, kDown, kHigh), 1, kHigh);

    ExpectHeld(Hold(0.1F, kDown, kLow), 0, kLow);
    ExpectHeld(Hold(0.5F, kUp, kLow), 0, kLow);
    ExpectHeld(Hold(0.9F, kUp, kLow), 0, kLow);
    ExpectHeld(Hold(0.1F, kUp, kLow), 0.1F, kFree);
    ExpectHeld(Hold(1.2F, kUp, kLow), 0, kLow);
    ExpectHeld(Hold(1.2F, kDown, kLow), 0, kLow);
}

namespace {

/// A drag along whole degrees: what the pointer shows at each.
class Drag {
  public:
    explicit Drag(const KnobInstance& k) : knob_(k) {}
    float to(int turned) { // degrees from the start angle
        const float angle = AngleAt(Into360(knob_.start + turned));
        const bool up = knob::DirectionIncreasing(angle, last_);
        const float p = knob::PositionOf(angle, knob_.start, knob_.sweep);
        last_ = angle;
        return knob::HoldAtStops(p, up, false, true, stops);
    }
    knob::Stops stops;

  private:
    const KnobInstance& knob_;
    float last_ = 0;
};

} // namespace

TEST(KnobStops, AWholeTurnUpEndsAtTheStopAngleOfEveryInstance) {
    for (const KnobInstance& k : KnobInstances()) {
        Drag drag(k);
        for (int turned = 1; turned < k.sweep; ++turned) {
            EXPECT_NEAR(drag.to(turned), turned / static_cast<float>(k.sweep), 1e-5) << k << " at " << turned;
        }
        for (int turned = k.sweep + 1; turned < 360 + k.sweep / 2; ++turned) {
            EXPECT_EQ(drag.to(turned), 1) << k << " at " << turned;
        }
    }
}

TEST(KnobStops, AWholeTurnDownEndsAtTheStartAngleOfEveryInstance) {
    for (const KnobInstance& k : KnobInstances()) {
        Drag drag(k);
        for (int turned = k.sweep - 1; turned > 0; --turned) {
            EXPECT_NEAR(drag.to(turned), turned / static_cast<float>(k.sweep), 1e-5) << k << " at " << turned;
        }
        for (int turned = -1; turned > -360; --turned) {
            EXPECT_EQ(drag.to(turned), 0) << k << " at " << turned;
        }
    }
}

TEST(KnobQuantising, TakesTheNearestStepWithTiesToEven) {
    EXPECT_FLOAT_EQ(knob::Quantised(0.26F, 0, 10, true), 0.3F);
    EXPECT_FLOAT_EQ(knob::Quantised(0.24F, 0, 10, true), 0.2F);
    EXPECT_FLOAT_EQ(knob::Quantised(0.25F, 0, 2, true), 0.0F);
    EXPECT_FLOAT_EQ(knob::Quantised(0.75F, 0, 2, true), 1.0F);
    EXPECT_FLOAT_EQ(knob::Quantised(0.5F, -1, 0, true), 0.0F);
    EXPECT_EQ(knob::Quantised(0.26F, 0, 10, false), 0.26F);
    EXPECT_EQ(knob::Quantised(0.26F, 5, 5, true), 0.26F); // step 0
    EXPECT_EQ(knob::Quantised(0.26F, 10, 0, true), 0.26F);
    EXPECT_FLOAT_EQ(
        knob::Quantised(1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), true), 1);
}

TEST(KnobQuantising, LeavesEveryStepOfEveryInstanceInPlace) {
    for (const KnobInstance& k : KnobInstances()) {
        const int range = k.max - k.min;
        for (int step = 0; step <= range; ++step) {
            const float p = static_cast<float>(step) / static_cast<float>(range);
            EXPECT_FLOAT_EQ(knob::Quantised(p, k.min, k.max, true), p) << k;
        }
    }
}

TEST(KnobReflection, CountsFromTheOtherEndWithoutOverflow) {
    EXPECT_EQ(knob::Reflected(7, 0, 27), 20);
    EXPECT_EQ(knob::Reflected(-127, -127, 100), 100);
    EXPECT_EQ(knob::Reflected(std::numeric_limits<int>::min(), 0, std::numeric_limits<int>::max()),
              4294967295LL);
}

TEST(KnobReflection, ValueIsPositionTimesRange) {
    EXPECT_EQ(knob::ValueAt(0.5F, -100, 100), 0);
    EXPECT_EQ(knob::ValueAt(1, -32768, 32767), 32767);
    EXPECT_EQ(knob::ValueAt(0.25F, 3, 3), 3);
}

TEST(KnobMarkers, CountIsTheNumberOfTheText) {
    EXPECT_EQ(knob::MarkerCount("11"), 11);
    EXPECT_EQ(knob::MarkerCount("1"), 1);
    EXPECT_EQ(knob::MarkerCount("0"), 0);
    EXPECT_EQ(knob::MarkerCount("-3"), 0);
    EXPECT_EQ(knob::MarkerCount("abc"), 0);
    EXPECT_EQ(knob::MarkerCount(""), 0);
    EXPECT_EQ(knob::MarkerCount("2.5"), 2);
    EXPECT_EQ(knob::MarkerCount("1e300"), knob::kMostMarkers);
}

TEST(KnobMarkers, SpreadFromStartToStop) {
    for (const KnobInstance& k : KnobInstances()) {
        EXPECT_DOUBLE_EQ(knob::MarkerAngle(1, k.markers, k.start, k.sweep), k.start);
        EXPECT_EQ(Into360(static_cast<int>(knob::MarkerAngle(k.markers, k.markers, k.start, k.sweep))),
                  Into360(k.stop))
            << k;
    }
    EXPECT_DOUBLE_EQ(knob::MarkerAngle(2, 3, 0, 180), 90);
}

TEST(KnobMarkers, BandNeedsBothEnds) {
    EXPECT_TRUE(knob::InBand(24, 24, 28));
    EXPECT_TRUE(knob::InBand(28, 24, 28));
    EXPECT_FALSE(knob::InBand(23, 24, 28));
    EXPECT_FALSE(knob::InBand(29, 24, 28));
    EXPECT_FALSE(knob::InBand(1, -1, -1));
    EXPECT_FALSE(knob::InBand(1, 0, 5));
    EXPECT_FALSE(knob::InBand(5, 1, 0));
    EXPECT_TRUE(knob::InBand(1, 1, 1));
}
