#include "window/front_panel.h"

#include "frame/helpers/helpers.h"
#include "frame/record/record.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QProcess>

namespace {

/// The cursors and the view, worked with a real mouse and real keys.
class View : public FrontPanel {
  protected:
    Picture* Handle(const char* axis, int cursor) {
        return instrument->forms.MainForm->control<Picture>(QByteArray(axis) + "CursorHandle", cursor);
    }
    QCheckBox* Box(const char* axis, int cursor) {
        return Tab<QCheckBox>(kCursTab, QByteArray(axis) + "CursorEn", cursor);
    }
    double RecordSeconds() {
        return record->SampleDepth *
               static_cast<double>(driver->GetSamplePeriod(record->Running, record->HeldSamplePeriod));
    }
    /// What another program gets to see of the clipboard, while this one serves it.
    QImage Pasted() {
        QProcess paste;
        paste.start(QStringLiteral("xclip"),
                    {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-t"),
                     QStringLiteral("image/png"), QStringLiteral("-o")});
        EXPECT_TRUE(Until([&] { return paste.state() == QProcess::NotRunning; }));
        return QImage::fromData(paste.readAllStandardOutput(), "PNG").convertToFormat(QImage::Format_RGB32);
    }
    static int Pixels(const QImage& picture, QRgb colour) {
        int found = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                found += picture.pixel(x, y) == colour ? 1 : 0;
            }
        }
        return found;
    }
    static void Save(const QImage& picture, const QString& name) {
        const QString folder = qEnvironmentVariable("CORVANTINE_SHOTS");
        if (!folder.isEmpty()) {
            picture.save(QDir(folder).filePath(name + QStringLiteral(".png")));
        }
    }
    /// A picture of the panel for the eye, where CORVANTINE_SHOTS names a folder.
    void Shoot(const QString& name) {
        const QRect place = instrument->forms.surface->geometry();
        Save(QGuiApplication::primaryScreen()
                 ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
                 .toImage(),
             name);
    }
};

TEST_F(View, ATimeCursorFollowsTheMouseAndTheLineFollowsTheHandle) {
    Start();
    Box("Vert", 0)->click();
    Box("Vert", 1)->click();
    Picture* handle = Handle("Vert", 0);
    ASSERT_TRUE(Until([&] { return handle->isVisible(); }));
    const QPointF grip(5, 7);
    real_mouse::Drag(*handle, {grip, grip + QPointF(40, 0), grip + QPointF(120, 0)});
    ASSERT_TRUE(Until([&] {
        return instrument->cursorBars->VertCursorDragIndex() == -1 && record->VertCursorTime[0] > 0;
    }));
    const auto* bar = Main<Picture>("VertCursorBar");
    // The handle's middle stands at the place of the value, the mouse a pixel or two beside it.
    EXPECT_NEAR(record->VertCursorTime[0] / RecordSeconds(), (handle->x() + 5.5) / bar->width(), 0.02);
    EXPECT_EQ(handle->toolTip(), FormatSeconds(record->VertCursorTime[0]));
    Shoot(QStringLiteral("time_cursors"));
    ShutDown(*instrument);
}

TEST_F(View, AReleaseFarFromTheBarEndsTheDrag) {
    Start();
    Box("Horiz", 0)->click();
    Picture* handle = Handle("Horiz", 0);
    ASSERT_TRUE(Until([&] { return handle->isVisible(); }));
    real_mouse::Drag(*handle, {{7, 5}, {7, 40}, {-200, 5000}});
    ASSERT_TRUE(Until([&] { return record->HorizCursorVolts[0] == -126; }));
    EXPECT_TRUE(Until([&] { return instrument->cursorBars->HorizCursorDragIndex() == -1; }));
    real_mouse::Do(real_mouse::To(*Main<Picture>("HorizCursorBar"), {7, 20}));
    EXPECT_EQ(record->HorizCursorVolts[0], -126) << "the mouse only passes";
    ShutDown(*instrument);
}

TEST_F(View, TheRightButtonMovesAHundredth) {
    Start();
    Box("Horiz", 2)->click();
    Picture* handle = Handle("Horiz", 2);
    ASSERT_TRUE(Until([&] { return handle->isVisible(); }));
    const int top = handle->y();
    real_mouse::Drag(*handle, {{7, 5}, {7, 35}, {7, 105}}, 3);
    ASSERT_TRUE(Until([&] { return record->HorizCursorVolts[2] != 0; }));
    const double height = Main<Picture>("HorizCursorBar")->height();
    EXPECT_NEAR(record->HorizCursorVolts[2], (0.5 - (top + 5 + 1) / height) * 252, 0.1);
    ShutDown(*instrument);
}

TEST_F(View, TheKeyboardMovesAHandleToo) {
    Start();
    Box("Vert", 1)->click();
    Picture* handle = Handle("Vert", 1);
    ASSERT_TRUE(Until([&] { return handle->isVisible(); }));
    real_mouse::Click(*handle); // takes the focus and moves nothing
    instrument->forms.surface->activateWindow();
    ASSERT_TRUE(Until([&] { return instrument->forms.surface->isActiveWindow(); }));
    handle->setFocus(Qt::TabFocusReason);
    real_mouse::Do({QStringLiteral("key"), QStringLiteral("Right"), QStringLiteral("shift+Right")});
    const double pixel = RecordSeconds() / Main<Picture>("VertCursorBar")->width();
    EXPECT_TRUE(Until([&] { return std::abs(record->VertCursorTime[1] - 11 * pixel) < pixel / 1000; }))
        << record->VertCursorTime[1];
    Shoot(QStringLiteral("focus"));
    ShutDown(*instrument);
}

TEST_F(View, AClickInThePlotSetsTheTriggerLevel) {
    Start();
    auto* plot = Main<PlotCanvas>("MainPlotCanvas");
    real_mouse::Click(*plot, QPointF(150, plot->height() / 4.0));
    EXPECT_TRUE(Until([&] { return std::abs(Main<KnobControl1>("TriggerKnob")->KnobValue() - 50) <= 1; }));
    Shoot(QStringLiteral("trigger_click"));
    ShutDown(*instrument);
}

TEST_F(View, TheCursorsComeBackInTheNextRun) {
    Start();
    Box("Vert", 2)->click();
    Box("Horiz", 1)->click();
    ASSERT_TRUE(Until([&] { return Handle("Horiz", 1)->isVisible(); }));
    real_mouse::Drag(*Handle("Vert", 2), {{5, 7}, {60, 7}, {80, 7}});
    real_mouse::Drag(*Handle("Horiz", 1), {{7, 5}, {7, 60}, {7, 70}});
    ASSERT_TRUE(Until([&] { return record->HorizCursorVolts[1] != 0 && record->VertCursorTime[2] != 0; }));
    const double time = record->VertCursorTime[2];
    const double level = record->HorizCursorVolts[1];
    const QPoint timePlace = Handle("Vert", 2)->pos();
    const QPoint levelPlace = Handle("Horiz", 1)->pos();
    ShutDown(*instrument);

    Start();
    EXPECT_EQ(record->VertCursorTime[2], time);
    EXPECT_EQ(record->HorizCursorVolts[1], level);
    EXPECT_TRUE(Handle("Vert", 2)->isVisible());
    EXPECT_TRUE(Handle("Horiz", 1)->isVisible());
    EXPECT_FALSE(Handle("Vert", 0)->isVisible());
    EXPECT_EQ(Handle("Vert", 2)->pos(), timePlace);
    EXPECT_EQ(Handle("Horiz", 1)->pos(), levelPlace);
    Shoot(QStringLiteral("came_back"));
    ShutDown(*instrument);
}

TEST_F(View, TheLargeWindowsPictureCanBePastedIntoAnotherProgram) {
    Start();
    ASSERT_TRUE(Until([&] { return PixelsOnScreen(ToQColor(record->ChannelColour[1])) > 300; }));
    emit Main<ButtonControl1>("FullScreenButton")->Click();
    Form& large = *instrument->forms.FullScreenTimeForm;
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&large, kPatience));
    large.setGeometry(40, 500, 900, 500); // where nothing lies above its button
    large.raise();
    auto* button = large.control<ButtonControl1>("ClipboardButton");
    ASSERT_TRUE(Until([&] { return large.size() == QSize(900, 500); }));
    instrument->runLoop->RunButton_Click(); // the picture stays as it is
    real_mouse::Click(*button);
    ASSERT_TRUE(Until([&] { return QGuiApplication::clipboard()->ownsClipboard(); }));
    const QImage pasted = Pasted();
    EXPECT_EQ(pasted.size(), large.size() * large.devicePixelRatioF());
    const auto* canvas = large.control<PlotCanvas>("Canvas");
    const QImage plot = canvas->Image();
    EXPECT_EQ(pasted.pixel(plot.width() / 2, 3), plot.pixel(plot.width() / 2, 3));
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        const QRgb colour = ToQColor(record->ChannelColour[channel]).rgb();
        EXPECT_GT(Pixels(pasted, colour), 300) << channel;
    }
    Save(pasted, QStringLiteral("pasted_large"));

    // The last press counts, and a clipboard that another program then holds is that program's.
    large.resize(700, 400);
    real_mouse::Click(*button);
    EXPECT_TRUE(Until([&] { return Pasted().size() == QSize(700, 400) * large.devicePixelRatioF(); }));
    QProcess other;
    other.start(QStringLiteral("sh"),
                {QStringLiteral("-c"), QStringLiteral("echo mine | xclip -selection clipboard -i")});
    ASSERT_TRUE(
        Until([&] { return QGuiApplication::clipboard()->text().startsWith(QStringLiteral("mine")); }));
    real_mouse::Click(*button);
    EXPECT_TRUE(Until([&] { return Pasted().size() == QSize(700, 400) * large.devicePixelRatioF(); }));
    other.kill();
    other.waitForFinished();
    ShutDown(*instrument);
}

TEST_F(View, TheSpectrumWindowsPictureCanBePastedIntoAnotherProgram) {
    Start();
    ASSERT_TRUE(Until([&] { return PixelsOnScreen(ToQColor(record->ChannelColour[1])) > 300; }));
    instrument->runLoop->RunButton_Click();
    emit Tab<ButtonControl1>(1, "FFTButton")->Click();
    Form& spectrum = *instrument->forms.FFTForm;
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&spectrum, kPatience));
    spectrum.move(40, 500);
    spectrum.raise();
    emit spectrum.control<ButtonControl1>("ClipboardButton")->Click();
    const QImage pasted = Pasted();
    EXPECT_EQ(pasted.size(), spectrum.size() * spectrum.devicePixelRatioF());
    EXPECT_GT(Pixels(pasted, ToQColor(record->ChannelColour[1]).rgb()), 300);
    Save(pasted, QStringLiteral("pasted_spectrum"));
    ShutDown(*instrument);
}

} // namespace
