#include "channels/offset_null.h"
#include "channels/offset_null_design.h"
#include "controls/form.h"
#include "frame/record/record.h"

#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QtTest>
#include <gtest/gtest.h>

namespace {

class FixedScale : public ChannelScale {
  public:
    float GetVoltsPerDiv() const override { return 0.3F; }
    float GetVoltsPerADCStep() const override { return 0.0236220F; }
    float GetOffset() const override { return 0; }
    int GetRange() const override { return 1; }
};

class OffsetNullTest : public testing::Test {
  protected:
    OffsetNullTest() {
        scales.fill(&scale);
        dialog = std::make_unique<OffsetNullDialog>(form, record, scales);
        dialog->PointAt(2, 1);
    }
    /// One pass of the measurements.
    void Measure(float steps) {
        record.OffsetNullMeasured[2] = steps;
        record.OffsetNullActive = true;
    }
    QString Line() const { return form.control<QLineEdit>("CurrentNullText")->text(); }

    Record record;
    Form form{OffsetNullDesign()};
    FixedScale scale;
    OffsetNullDialog::Scales scales;
    std::unique_ptr<OffsetNullDialog> dialog;
};

} // namespace

TEST_F(OffsetNullTest, ShowsChannelRangeAndValue) {
    record.OffsetNull(2, 1) = -1.25F;
    dialog->PointAt(2, 1);
    EXPECT_EQ(form.control<QLabel>("CurrentChanText")->text(), QStringLiteral("Offset for channel 2"));
    EXPECT_EQ(Line(), QStringLiteral("0.3 Volts/Div offset = -1.250 ADC steps"));
}

TEST_F(OffsetNullTest, ThrowsTheFirstReadingAwayAndKeepsTheSecond) {
    record.OffsetNull(2, 1) = 9;
    record.OffsetNullActive = true;
    dialog->ApplyNullButton_Click();
    EXPECT_EQ(record.OffsetNull(2, 1), 0.0F);
    EXPECT_FALSE(record.OffsetNullActive);
    dialog->WaitForUpdateTimer1_Timer(); // nothing measured yet
    EXPECT_TRUE(form.timer("WaitForUpdateTimer1")->isActive());
    Measure(9.5F);
    dialog->WaitForUpdateTimer1_Timer();
    EXPECT_FALSE(form.timer("WaitForUpdateTimer1")->isActive());
    EXPECT_TRUE(form.timer("WaitForUpdateTimer2")->isActive());
    dialog->WaitForUpdateTimer2_Timer();
    EXPECT_EQ(record.OffsetNull(2, 1), 0.0F);
    Measure(0.75F);
    dialog->WaitForUpdateTimer2_Timer();
    EXPECT_FALSE(form.timer("WaitForUpdateTimer2")->isActive());
    EXPECT_EQ(record.OffsetNull(2, 1), 0.75F);
    EXPECT_TRUE(record.OffsetNullActive);
    EXPECT_EQ(Line(), QStringLiteral("0.3 Volts/Div offset = 0.750 ADC steps"));
}

TEST_F(OffsetNullTest, ARangeTurnedMeanwhileTakesTheReading) {
    record.OffsetNull(2, 1) = 9;
    dialog->ApplyNullButton_Click();
    Measure(1);
    dialog->WaitForUpdateTimer1_Timer();
    dialog->PointAt(2, 2);
    Measure(3);
    dialog->WaitForUpdateTimer2_Timer();
    EXPECT_EQ(record.OffsetNull(2, 1), 0.0F);
    EXPECT_EQ(record.OffsetNull(2, 2), 3.0F);
}

TEST_F(OffsetNullTest, CancelClearsAndDoneHides) {
    record.OffsetNull(2, 1) = 4;
    dialog->CancelNullButton_Click();
    EXPECT_EQ(record.OffsetNull(2, 1), 0.0F);
    EXPECT_EQ(Line(), QStringLiteral("0.3 Volts/Div offset = 0.000 ADC steps"));
    form.show();
    dialog->DoneNullButton_Click();
    EXPECT_FALSE(form.isVisible());
}

TEST_F(OffsetNullTest, ThePressOnItsValueIsThatOnTheDialog) {
    auto* value = form.control<QLineEdit>("CurrentNullText");
    form.show();
    std::vector<Qt::MouseButton> presses;
    QObject::connect(&form, &Form::Pressed, [&](Qt::MouseButton button) { presses.push_back(button); });
    QTest::mousePress(value, Qt::LeftButton, {}, QPoint(40, 10));
    QTest::mouseMove(value, QPoint(120, 12));
    QTest::mouseRelease(value, Qt::LeftButton, {}, QPoint(120, 12));
    EXPECT_EQ(presses, std::vector{Qt::LeftButton});
    EXPECT_FALSE(value->hasSelectedText());
    QTest::mousePress(form.control<QLabel>("InstructionsLabel"), Qt::LeftButton, {}, QPoint(40, 10));
    EXPECT_EQ(presses.size(), 2U);
}

TEST_F(OffsetNullTest, ADragOfItsValueMovesTheDialog) {
    auto* value = form.control<QLineEdit>("CurrentNullText");
    form.move(50, 60);
    form.show();
    const auto send = [&](QEvent::Type type, QPoint at) {
        const QPointF global = at;
        QMouseEvent event(type, QPointF(value->mapFromGlobal(at)), global, Qt::LeftButton, Qt::LeftButton,
                          {});
        QApplication::sendEvent(value, &event);
    };
    const QPoint from = value->mapToGlobal(QPoint(40, 10));
    send(QEvent::MouseButtonPress, from);
    send(QEvent::MouseMove, from + QPoint(30, 20));
    send(QEvent::MouseMove, from + QPoint(35, 25));
    send(QEvent::MouseButtonRelease, from + QPoint(35, 25));
    EXPECT_EQ(form.pos(), QPoint(85, 85));
}

TEST_F(OffsetNullTest, ShowsItself) {
    dialog->Show();
    EXPECT_TRUE(form.isVisible());
    dialog->Show();
    EXPECT_TRUE(form.isVisible());
}

TEST_F(OffsetNullTest, ARangeThatNoModuleHasStaysInsideTheTable) {
    dialog->PointAt(4, 99);
    dialog->ApplyNullButton_Click();
    dialog->PointAt(1, -5);
    dialog->CancelNullButton_Click();
}
