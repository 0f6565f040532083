#include "frame/instrument/instrument_fixture.h"

#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "display/plot_canvas.h"
#include "frame/record/record.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QRadioButton>

namespace {

/// The large time window and the spectrum window on the whole instrument.
class PlotWindows : public InstrumentTest {
  protected:
    PlotCanvas* Plot(const std::unique_ptr<Form>& form) { return form->control<PlotCanvas>("Canvas"); }
    static int Lit(const PlotCanvas& plot) {
        const QImage picture = plot.Image();
        int lit = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                lit += (picture.pixel(x, y) & 0xFFFFFF) != 0 ? 1 : 0;
            }
        }
        return lit;
    }
    void Press(const std::unique_ptr<Form>& form) {
        emit form->control<ButtonControl1>("ClipboardButton")->Click();
    }
};

} // namespace

TEST_F(PlotWindows, ASpectrumThatIsSwitchedOnWhileStoppedShowsItsPicture) {
    Start(2);
    instrument->runLoop->RunButton_Click();
    ASSERT_FALSE(record->Running);
    emit instrument->forms.TabForm[1]->control<ButtonControl1>("FFTButton")->Click();
    ASSERT_TRUE(instrument->forms.FFTForm->isVisible());
    EXPECT_GT(Lit(*Plot(instrument->forms.FFTForm)), 500);
    const QSize size = Plot(instrument->forms.FFTForm)->size();
    EXPECT_EQ(Plot(instrument->forms.FFTForm)->Image().size(),
              size * Plot(instrument->forms.FFTForm)->devicePixelRatioF());
}

TEST_F(PlotWindows, TheLargeWindowIsNotBlackWhenItOpensOrGrowsWhileStopped) {
    Start(2);
    instrument->runLoop->RunButton_Click();
    instrument->shell->FullScreenButton_Click();
    EXPECT_GT(Lit(*Plot(instrument->forms.FullScreenTimeForm)), 500);
    instrument->forms.FullScreenTimeForm->resize(800, 500);
    EXPECT_GT(Lit(*Plot(instrument->forms.FullScreenTimeForm)), 500);
}

TEST_F(PlotWindows, TheLargeWindowsTextFollowsTimebaseAndProbe) {
    Start(1);
    instrument->shell->FullScreenButton_Click();
    const QString before = LabelText(instrument->forms.FullScreenTimeForm.get(), "ScopeSettingsLabel");
    instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(12);
    const QString turned = LabelText(instrument->forms.FullScreenTimeForm.get(), "ScopeSettingsLabel");
    EXPECT_TRUE(turned.startsWith(QStringLiteral("HORZ:40us/div VERT: CH1:"))) << qPrintable(turned);
    auto* x1 = instrument->forms.TabForm[1]->control<QRadioButton>("ProbeType", 0);
    auto* x10 = instrument->forms.TabForm[1]->control<QRadioButton>("ProbeType", 1);
    (x1->isChecked() ? x10 : x1)->click();
    EXPECT_NE(LabelText(instrument->forms.FullScreenTimeForm.get(), "ScopeSettingsLabel"), turned);
    EXPECT_NE(before, turned);
}

TEST_F(PlotWindows, TheClipboardButtonsTakeTheirWindows) {
    Start(2);
    instrument->shell->FullScreenButton_Click();
    emit instrument->forms.TabForm[1]->control<ButtonControl1>("FFTButton")->Click();
    for (Form* form : {instrument->forms.FullScreenTimeForm.get(), instrument->forms.FFTForm.get()}) {
        QGuiApplication::clipboard()->clear();
        form->control<QLabel>("OtherInfoLabel")->setText({});
        emit form->control<ButtonControl1>("ClipboardButton")->Click();
        ASSERT_TRUE(QGuiApplication::clipboard()->mimeData()->hasImage());
        EXPECT_EQ(QGuiApplication::clipboard()->image().size(), form->size() * form->devicePixelRatioF());
        EXPECT_TRUE(LabelText(form, "OtherInfoLabel").contains(QStringLiteral("DATA ACQUIRED AT: ")));
    }
}

TEST_F(PlotWindows, TheCursorHandlesFollowTheTimebase) {
    Start(1);
    auto* box = instrument->forms.TabForm[kCursTab]->control<QCheckBox>("VertCursorEn", 0);
    box->setChecked(true);
    const auto turn = [this](int setting) {
        instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(setting);
    };
    turn(8); // 20 ns a sample
    record->VertCursorTime[0] = 30e-6;
    turn(9); // 40 ns
    const auto* handle = instrument->forms.MainForm->control<Picture>("VertCursorHandle", 0);
    EXPECT_NEAR(handle->x(), 0.25 * 354 - 5.5, 1);
    turn(8);
    EXPECT_NEAR(handle->x(), 0.5 * 354 - 5.5, 1);
    turn(0); // a nanosecond: the cursor lies beyond the record
    EXPECT_NEAR(record->VertCursorTime[0], 2990e-9, 1e-12);
    EXPECT_NEAR(handle->x(), 2990.0 / 3000 * 354 - 5.5, 1);
}

TEST_F(PlotWindows, ATimebaseTurnedWhileStoppedMovesTheHandlesWhenTheRunGoesOn) {
    Start(1);
    instrument->forms.TabForm[kCursTab]->control<QCheckBox>("VertCursorEn", 0)->setChecked(true);
    auto* timeBase = instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob");
    const auto* handle = instrument->forms.MainForm->control<Picture>("VertCursorHandle", 0);
    timeBase->SetKnobValue(8);
    record->VertCursorTime[0] = 30e-6;
    record->HeldSamplePeriod = 20e-9;
    instrument->runLoop->RunButton_Click();
    ASSERT_FALSE(record->Running);
    timeBase->SetKnobValue(9);
    EXPECT_NEAR(handle->x(), 0.5 * 354 - 5.5, 1) << "of the held record";
    instrument->runLoop->RunButton_Click();
    instrument->plotter->PlotNow();
    EXPECT_NEAR(handle->x(), 0.25 * 354 - 5.5, 1);
    instrument->runLoop->RunButton_Click();
    timeBase->SetKnobValue(0);
    instrument->runLoop->RunButton_Click();
    instrument->plotter->PlotNow();
    EXPECT_NEAR(record->VertCursorTime[0], 2990e-9, 1e-12);
}

TEST_F(PlotWindows, CursorsOfTheSettingsStandInTheirPlacesAtTheStart) {
    Prepare(1);
    const QString section = QStringLiteral("CursTabSettings");
    const auto put = [&](const char* key, const char* text) {
        instrument->settings.Save(QStringLiteral("Corvantine"), section, QString::fromLatin1(key),
                                  QString::fromLatin1(text));
    };
    put("VertCursorEn1", "1");
    put("VertCursor1", "3.0e-05");
    put("VertCursorEn2", "1");
    put("VertCursor2", "9.5");
    put("HorizCursorEn0", "1");
    put("HorizCursor0", "63.0");
    StartUp(*instrument);
    EXPECT_NEAR(instrument->forms.MainForm->control<Picture>("VertCursorHandle", 1)->x(), 0.5 * 354 - 5.5, 1);
    EXPECT_NEAR(record->VertCursorTime[2], 2990 * 20e-9, 1e-12) << "brought back into the record";
    EXPECT_NEAR(instrument->forms.MainForm->control<Picture>("HorizCursorHandle", 0)->y(), 0.25 * 237 - 5.5,
                1);
    ShutDown(*instrument);
    EXPECT_EQ(
        instrument->settings.Get(QStringLiteral("Corvantine"), section, QStringLiteral("VertCursor1"), {}),
        QStringLiteral("3.0e-05"));
}
