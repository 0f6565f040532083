#include "frame/helpers/helpers.h"

#include "controls/button_control.h"
#include "controls/colour.h"

#include <QEvent>
#include <QLabel>
#include <QLocale>
#include <gtest/gtest.h>

namespace {

class CountPaletteChanges : public QObject {
  public:
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::PaletteChange ? 1 : 0;
        return false;
    }
};

std::string Text(double seconds) {
    return FormatSeconds(seconds).toStdString();
}

} // namespace

TEST(FormatSeconds, ChoosesTheUnitByTheAbsoluteValue) {
    EXPECT_EQ(Text(0), "0.0ns");
    EXPECT_EQ(Text(20e-9), "20.0ns");
    EXPECT_EQ(Text(999.9e-9), "999.9ns");
    EXPECT_EQ(Text(1e-06), "1.000us");
    EXPECT_EQ(Text(0.000999), "999.000us");
    EXPECT_EQ(Text(0.001), "1.000ms");
    EXPECT_EQ(Text(0.9999), "999.900ms");
    EXPECT_EQ(Text(1.0), "1.000s");
    EXPECT_EQ(Text(2621.4), "2621.400s");
    EXPECT_EQ(Text(-2e-6), "-2.000us");
    EXPECT_EQ(Text(-3.5), "-3.500s");
}

TEST(FormatSeconds, AFigureThatRoundsToAThousandIsOneOfTheNextUnit) {
    EXPECT_EQ(Text(static_cast<double>(1e-06F)), "1.000us"); // 9.99999997e-07
    EXPECT_EQ(Text(999.94e-9), "999.9ns");
    EXPECT_EQ(Text(999.96e-9), "1.000us");
    EXPECT_EQ(Text(-999.96e-9), "-1.000us");
    EXPECT_EQ(Text(999.9994e-6), "999.999us");
    EXPECT_EQ(Text(999.9996e-6), "1.000ms");
    EXPECT_EQ(Text(0.9999994), "999.999ms");
    EXPECT_EQ(Text(0.9999996), "1.000s");
}

TEST(FormatSeconds, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(Text(12.25e-9), "12.3ns");
    EXPECT_EQ(Text(-12.25e-9), "-12.3ns");
    EXPECT_EQ(Text(1.0625), "1.063s");
}

TEST(SetButtonFill, PutsTheColourOfTheCondition) {
    ButtonControl1 button;
    SetButtonFill(&button, true, 0xFF00, 0x808080);
    EXPECT_EQ(FromQColor(button.ButtonFillColor()), 0xFF00U);
    SetButtonFill(&button, false, 0xFF00, 0xFF);
    EXPECT_EQ(FromQColor(button.ButtonFillColor()), 0xFFU);
}

TEST(SetButtonText, PutsTheCaptionOfTheCondition) {
    ButtonControl1 button;
    SetButtonText(&button, true, QStringLiteral("run"), QStringLiteral("stop"));
    EXPECT_EQ(button.ButtonCaption(), QStringLiteral("run"));
    SetButtonText(&button, false, QStringLiteral("run"), QStringLiteral("stop"));
    EXPECT_EQ(button.ButtonCaption(), QStringLiteral("stop"));
}

TEST(SetOnOffColours, PutsBothColoursAndLeavesALabelThatHasThemAlone) {
    QLabel label;
    SetOnOffColours(&label, true, 0x112233, 0x445566, 0x1, 0x2);
    EXPECT_EQ(FromQColor(label.palette().color(QPalette::WindowText)), 0x112233U);
    EXPECT_EQ(FromQColor(label.palette().color(QPalette::Window)), 0x445566U);
    EXPECT_TRUE(label.autoFillBackground());

    CountPaletteChanges changes;
    label.installEventFilter(&changes);
    SetOnOffColours(&label, true, 0x112233, 0x445566, 0x1, 0x2);
    EXPECT_EQ(changes.count, 0);
    SetOnOffColours(&label, false, 0x112233, 0x445566, 0x1, 0x2);
    EXPECT_EQ(changes.count, 1);
    EXPECT_EQ(FromQColor(label.palette().color(QPalette::WindowText)), 0x1U);
    EXPECT_EQ(FromQColor(label.palette().color(QPalette::Window)), 0x2U);
}

TEST(MakeDataStamp, NamesProgramVersionAndMoment) {
    const QDateTime now(QDate(2026, 3, 4), QTime(5, 6, 7));
    EXPECT_EQ(MakeDataStamp(QStringLiteral("Ver1.2.3"), now),
              QStringLiteral("Corvantine Ver1.2.3.  DATA ACQUIRED AT: ") +
                  QLocale().toString(now, QLocale::ShortFormat));
}
