#include "analysis/measurement_design.h"
#include "analysis/measurement_window.h"
#include "controls/form.h"
#include "frame/record/record.h"
#include "support/scripted_driver.h"

#include <QCheckBox>
#include <QLabel>
#include <QtTest>
#include <gtest/gtest.h>
#include <limits>

namespace {

class FixedScale : public ChannelScale {
  public:
    float GetVoltsPerDiv() const override { return 0.3F; }
    float GetVoltsPerADCStep() const override { return 0.5F; }
    float GetOffset() const override { return 0; }
    int GetRange() const override { return 0; }
};

/// Counts what is painted anew.
class PaintCounter : public QObject {
  public:
    int paints = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

class MeasurementWindowTest : public testing::Test {
  protected:
    MeasurementWindowTest() {
        record.NumScopesFound = 2;
        record.ScopeInUse = {true, false, true, false, true, true};
        record.ChannelColour.fill(0x00FFFF);
        record.HeldSamplePeriod = 1e-6;
        scales.fill(&scale);
        for (int i = 0; i < kCursors; ++i) {
            controls.VertCursorEn[i] = &boxes[static_cast<std::size_t>(i)];
            controls.HorizCursorEn[i] = &boxes[static_cast<std::size_t>(kCursors + i)];
        }
        window = std::make_unique<MeasurementWindow>(form, record, instrument.driver, scales, controls);
        window->Build();
    }
    QString Text(const char* name) const { return form.control<QLabel>(name)->text(); }

    Record record;
    ScriptedInstrument instrument;
    Form form{MeasurementDesign()};
    FixedScale scale;
    MeasurementWindow::Scales scales;
    std::array<QCheckBox, 6> boxes;
    MeasurementWindow::Controls controls;
    std::unique_ptr<MeasurementWindow> window;
};

} // namespace

TEST_F(MeasurementWindowTest, BuildsARowForEachChannelInUseOneBelowTheOther) {
    EXPECT_EQ(form.control<QWidget>("ChStats1")->y(), 22);
    EXPECT_EQ(form.control<QWidget>("ChStats3")->y(), 39);
    EXPECT_EQ(form.control<QWidget>("CursStats5")->y(), 56);
    EXPECT_EQ(form.findChild<QWidget*>("ChStats2"), nullptr);
    EXPECT_EQ(form.height(), 2 * 17 + 64);
    EXPECT_EQ(Text("ChStats3_1"), QStringLiteral("3"));
    EXPECT_EQ(Text("ChStats6_1"), QStringLiteral("M2"));
}

TEST_F(MeasurementWindowTest, ShowsTheFiguresAndFeedsTheOffsetNull) {
    record.ChannelOffsetPercent[3] = 10;
    record.ChannelBWLimit[3] = true;
    for (int i = 0; i < kSampleDepth; ++i) {
        record.SampleData(3, i) = i % 100 < 50 ? 60.0F : -40.0F;
    }
    window->UpdateStats();
    EXPECT_EQ(Text("ChStats3_2"), QStringLiteral("0.3bw"));
    EXPECT_EQ(Text("ChStats3_3"), QStringLiteral("-1.35")); // (10 - 12.7) steps of half a volt
    EXPECT_EQ(Text("ChStats3_4"), QStringLiteral("50.00"));
    EXPECT_EQ(Text("ChStats3_5"), QStringLiteral("10.00KHz"));
    EXPECT_EQ(Text("ChStats1_5"), QStringLiteral("low signal"));
    EXPECT_FLOAT_EQ(record.OffsetNullMeasured[3], -2.7F);
    EXPECT_TRUE(record.OffsetNullActive);
}

TEST_F(MeasurementWindowTest, ShowsVoltsAtTheEnabledCursors) {
    boxes[0].setChecked(true);
    boxes[2].setChecked(true);
    boxes[3].setChecked(true);
    record.VertCursorTime = {100e-6, 0.0, 1.0}; // the third lies far beyond the record
    record.HorizCursorVolts = {20.0, 0.0, 0.0};
    record.SampleData(1, 100) = 8;
    record.SampleData(1, kSampleDepth) = -6;
    window->UpdateStats();
    EXPECT_EQ(Text("CursStats1_1"), QStringLiteral("+10.00"));
    EXPECT_EQ(Text("CursStats1_2"), QStringLiteral(" "));
    EXPECT_EQ(Text("CursStats1_4"), QStringLiteral("+4.00"));
    EXPECT_EQ(Text("CursStats1_5"), QStringLiteral(" "));
    EXPECT_EQ(Text("CursStats1_6"), QStringLiteral("-3.00"));
}

TEST_F(MeasurementWindowTest, TheDriversPeriodReachesTheFrequencyAsItIs) {
    boxes[0].setChecked(true);
    record.VertCursorTime = {100e-6, 0.0, 0.0};
    for (int i = 0; i < kSampleDepth; ++i) {
        record.SampleData(1, i) = i % 100 < 50 ? 60.0F : -40.0F;
    }
    record.SampleData(1, 100) = 8;
    record.Running = true;
    instrument.script.samplePeriod.Always(1e-6F);
    window->UpdateStats();
    EXPECT_EQ(Text("ChStats1_5"), QStringLiteral("10.00KHz"));
    for (const float odd : {0.0F, -1e-6F, std::numeric_limits<float>::quiet_NaN(),
                            std::numeric_limits<float>::infinity(), -0.0F}) {
        instrument.script.samplePeriod.Always(odd);
        window->UpdateStats();
        EXPECT_EQ(Text("ChStats1_5"), QStringLiteral("!")) << odd;
        EXPECT_EQ(Text("ChStats3_5"), QStringLiteral("low signal")) << odd;
        EXPECT_EQ(Text("CursStats1_4"), QStringLiteral("+4.00")) << "the cursor keeps the last good period";
        instrument.script.samplePeriod.Always(1e-6F);
        window->UpdateStats();
        EXPECT_EQ(Text("ChStats1_5"), QStringLiteral("10.00KHz"));
    }
}

TEST_F(MeasurementWindowTest, AModuleThatFellOutOfTheStackHasNoRow) {
    record.ScopeInUse[1] = false;
    record.OffsetNullMeasured[1] = 99;
    window->SetVisible(6, false);
    window->UpdateStats();
    EXPECT_EQ(form.findChild<QWidget*>("ChStats1"), nullptr);
    EXPECT_EQ(form.findChild<QWidget*>("CursStats1"), nullptr);
    EXPECT_EQ(record.OffsetNullMeasured[1], 99.0F);
    EXPECT_EQ(form.control<QWidget>("ChStats3")->y(), 22);
    EXPECT_EQ(form.control<QWidget>("CursStats5")->y(), 39);
    EXPECT_EQ(form.control<QWidget>("ChStats6")->y(), 56);
    EXPECT_TRUE(form.control<QWidget>("ChStats6")->isHidden());
    window->SetVisible(1, true);
    window->UpdateStats();
}

TEST_F(MeasurementWindowTest, TheMathRowsShowTheirVoltsAndCursors) {
    boxes[1].setChecked(true);
    boxes[3].setChecked(true);
    record.ChannelOffsetPercent[6] = -100;
    record.VertCursorTime = {0.0, 50e-6, 0.0};
    record.HorizCursorVolts = {27.0, 0.0, 0.0};
    for (int i = 0; i < kSampleDepth; ++i) {
        record.SampleData(6, i) = -27;
    }
    record.SampleData(6, 50) = 73;
    window->UpdateStats();
    EXPECT_EQ(Text("ChStats6_2"), QStringLiteral("0.3"));
    EXPECT_EQ(Text("ChStats6_3"), QStringLiteral("+50.02"));
    EXPECT_EQ(Text("ChStats6_4"), QStringLiteral("50.00"));
    EXPECT_EQ(Text("CursStats6_1"), QStringLiteral("+77.00"));
    EXPECT_EQ(Text("CursStats6_5"), QStringLiteral("+100.00"));
}

TEST_F(MeasurementWindowTest, AFigureThatStaysIsNotSetAgain) {
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    window->UpdateStats();
    QApplication::processEvents();
    PaintCounter counter;
    for (QLabel* label : form.findChildren<QLabel*>()) {
        label->installEventFilter(&counter);
    }
    window->UpdateStats();
    QApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);
    for (int i = 0; i < kSampleDepth; ++i) {
        record.SampleData(1, i) = 20;
    }
    window->UpdateStats();
    ASSERT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }));
}

TEST_F(MeasurementWindowTest, HidesARowWithBothItsPanels) {
    window->SetVisible(3, false);
    EXPECT_TRUE(form.control<QWidget>("ChStats3")->isHidden());
    EXPECT_TRUE(form.control<QWidget>("CursStats3")->isHidden());
    window->SetVisible(2, true); // not built, nothing to show
    window->SetVisible(3, true);
    EXPECT_FALSE(form.control<QWidget>("ChStats3")->isHidden());
}
