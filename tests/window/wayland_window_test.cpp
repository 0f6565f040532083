#include "controls/button_control.h"
#include "controls/face_style.h"
#include "controls/symbol_font.h"
#include "display/plot_canvas.h"
#include "frame/instrument/instrument_fixture.h"
#include "frame/record/record.h"
#include "real_mouse.h"

#include <QComboBox>
#include <QProcess>

namespace {

constexpr int kPatience = 30000; ///< ms

/// The whole instrument under a compositor that places windows by itself and tells nobody where. They are
/// found in a picture of the screen.
class Wayland : public InstrumentTest {
  protected:
    void SetUp() override {
        ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("wayland"));
        LoadSymbolFont();
        ApplyFaceStyle(*qApp);
        InstrumentTest::SetUp();
        Do("mousemove 1919 1079 sleep 0.3 mousemove 1870 1030 sleep 0.3");
        ASSERT_TRUE(Until([&] { // the compositor's own ground comes a little later
            bare = Screen();
            QTest::qWait(200);
            return bare.pixelColor(500, 500) != Qt::black && bare == Screen();
        }));
        Start(4);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Face(), kPatience));
        instrument->forms.MainForm->timer("RunTimer")->stop(); // nothing but a test changes the picture
        ASSERT_TRUE(Until([&] { return Origin().has_value(); }));
    }
    Surface& Face() { return *instrument->forms.surface; }
    Form& Stats() { return *instrument->forms.StatsForm; }
    template <class T> T* Tab(int slot, const char* name, int index = -1) {
        return instrument->forms.TabForm[slot]->control<T>(name, index);
    }
    static bool Until(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, kPatience);
    }
    static void Do(const QString& words) {
        real_mouse::Do(words.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
    static QByteArray Output(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, kPatience));
        return process.readAllStandardOutput();
    }
    /// By a file: a picture takes seconds through a pipe that is emptied once an event loop's turn.
    QImage Screen() const {
        const QString file = folder.filePath(QStringLiteral("screen.ppm"));
        Output(QStringLiteral("import"), {"-window", "root", file});
        return QImage(file).convertToFormat(QImage::Format_RGB32);
    }
    /// Where the surface stands, by the header of a panel whose colour no other part has.
    std::optional<QPoint> Origin() {
        const auto* name = Tab<QLabel>(kMathTab, "TabName");
        const QRgb colour = name->palette().color(QPalette::Window).rgb();
        const QImage screen = Screen();
        QRect found;
        for (int y = 0; y < screen.height(); ++y) {
            const auto* line = reinterpret_cast<const QRgb*>(screen.constScanLine(y));
            for (int x = 0; x < screen.width(); ++x) {
                if (line[x] == colour) {
                    found |= QRect(x, y, 1, 1);
                }
            }
        }
        if (found.width() < name->width()) {
            return std::nullopt;
        }
        const QWidget* header = Tab<QWidget>(kMathTab, "Image1");
        return found.center() - header->mapTo(&Face(), header->rect().center());
    }
    QString To(QPoint place) const {
        return QStringLiteral("mousemove %1 %2 sleep 0.1 ").arg(place.x()).arg(place.y());
    }
    QPoint OnScreen(const QWidget* part, QPoint at) {
        return Origin().value_or(QPoint()) + part->mapTo(&Face(), at);
    }
    void Click(const QWidget* part) { Do(To(OnScreen(part, part->rect().center())) + "click 1 sleep 0.1"); }
    /// The pixels of a part that the screen shows otherwise than the part draws itself, with the room that
    /// finding the surface leaves.
    double Differing(const QWidget* part) {
        const QImage wanted = Face().grab(QRect(part->mapTo(&Face(), QPoint(0, 0)), part->size())).toImage();
        const QImage screen = Screen();
        const QPoint at = OnScreen(part, {0, 0});
        int best = wanted.width() * wanted.height();
        for (const QPoint nudge : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1), QPoint(-1, 0),
                                   QPoint(0, -1), QPoint(-1, -1), QPoint(1, -1), QPoint(-1, 1)}) {
            int differing = 0;
            for (int y = 0; y < wanted.height(); ++y) {
                for (int x = 0; x < wanted.width(); ++x) {
                    differing += (wanted.pixel(x, y) & 0xFFFFFF) !=
                                         (screen.pixel(at + nudge + QPoint(x, y)) & 0xFFFFFF)
                                     ? 1
                                     : 0;
                }
            }
            best = std::min(best, differing);
        }
        return best / double(wanted.width() * wanted.height());
    }

    QImage bare; ///< the screen without the instrument
};

TEST_F(Wayland, ThePanelIsShapedAndTheMeasurementsStandBelowIt) {
    const QPoint origin = Origin().value();
    const QImage screen = Screen();
    EXPECT_EQ(screen.pixel(origin + QPoint(1, 1)), bare.pixel(origin + QPoint(1, 1))) << "the round shoulder";
    EXPECT_NE(screen.pixel(origin + QPoint(40, 20)), bare.pixel(origin + QPoint(40, 20)));
    // The first row of the measurements, in its channel's colour, a little below the face.
    const QPoint row = origin + QPoint(120, instrument->forms.MainForm->height() + 12 + 22 + 3);
    EXPECT_EQ(QColor(screen.pixel(row)), ToQColor(record->ChannelColour[1]));
}

TEST_F(Wayland, APanelComesOutWithAllItsControls) {
    Click(Tab<QWidget>(1, "Image1"));
    EXPECT_TRUE(Until([&] { return record->TabOpen[1]; }));
    for (const char* name : {"VoltsKnob", "OffsetKnob", "ChannelOnButton", "InvertButton"}) {
        EXPECT_TRUE(Until([&] { return Differing(Tab<QWidget>(1, name)) < 0.02; }))
            << name << ": " << Differing(Tab<QWidget>(1, name));
    }
}

TEST_F(Wayland, MovesByItsPictureWithTheMeasurementsAndNeverHangs) {
    const auto* face = instrument->forms.MainForm->control<QWidget>("Image1");
    const QPoint grip(330, 24);
    const QPoint before = Origin().value();
    const QPoint from = OnScreen(face, grip);
    Do(To(from) + "mousedown 1 sleep 0.1 " + To(from + QPoint(20, 10)) + To(from + QPoint(60, 30)) +
       To(from + QPoint(150, 80)) + "sleep 0.2 mouseup 1");
    EXPECT_TRUE(Until([&] {
        const QPoint moved = Origin().value_or(before) - before;
        return moved.x() > 80 && moved.x() <= 150 && moved.y() > 40 && moved.y() <= 80;
    }));
    const QPoint row = QPoint(120, instrument->forms.MainForm->height() + 12 + 22 + 3);
    EXPECT_TRUE(Until([&] {
        return QColor(Screen().pixel(Origin().value() + row)) == ToQColor(record->ChannelColour[1]);
    })) << "the measurements came along";
    for (int i = 0; i < 4; ++i) {
        const QPoint at = OnScreen(face, grip);
        Do(QStringLiteral("mousemove %1 %2 sleep 0.1 mousedown 1 mousemove %3 %4 mouseup 1 ")
               .arg(at.x())
               .arg(at.y())
               .arg(at.x() + 15)
               .arg(at.y() + 15) +
           To({1500, 900}) + To({1520, 940}));
        const QPoint rest = Origin().value();
        Do(To({1700, 200}) + To({1710, 220}));
        EXPECT_EQ(Origin().value(), rest) << "hangs on the pointer";
    }
}

TEST_F(Wayland, AListOpensItsMenuWhereItStands) {
    Click(Tab<QWidget>(kMathTab, "Image1"));
    EXPECT_TRUE(Until([&] { return record->TabOpen[kMathTab]; }));
    auto* list = Tab<QComboBox>(kMathTab, "FFTWindowCombo");
    ASSERT_EQ(list->currentIndex(), 0);
    EXPECT_TRUE(Until([&] { return Differing(list) < 0.05; }));
    Click(list);
    EXPECT_TRUE(Until([&] { return QApplication::activePopupWidget() != nullptr; }));
    Do(QStringLiteral("key Down key Return"));
    EXPECT_TRUE(Until([&] { return list->currentIndex() == 1; }));
}

TEST_F(Wayland, KeysReachTheInstrument) {
    Click(Tab<QWidget>(kMathTab, "Image1")); // the compositor gives the keys to what was clicked
    EXPECT_TRUE(Until([&] { return record->TabOpen[kMathTab]; }));
    Do(QStringLiteral("key Escape"));
    EXPECT_TRUE(Until([&] { return !record->TabOpen[kMathTab]; }));
    Do(QStringLiteral("key Tab"));
    EXPECT_TRUE(Until([&] { return Face().focusWidget() != nullptr && Face().focusWidget()->hasFocus(); }));
    const bool stopped = !record->Running;
    Do(QStringLiteral("key r"));
    EXPECT_TRUE(Until([&] { return record->Running == stopped; }));
    Do(QStringLiteral("key l"));
    EXPECT_TRUE(Until([&] { return instrument->shell->FullScreenOn; }));
}

TEST_F(Wayland, TheClipboardTakesAPicture) {
    Click(instrument->forms.MainForm->control<QWidget>("FullScreenButton"));
    EXPECT_TRUE(Until([&] { return instrument->shell->FullScreenOn; }));
    emit instrument->forms.FullScreenTimeForm->control<ButtonControl1>("ClipboardButton")->Click();
    EXPECT_TRUE(Until([&] {
        return Output(QStringLiteral("wl-paste"), {QStringLiteral("--list-types")}).contains("image/");
    }));
}

TEST_F(Wayland, TheCloseButtonCloses) {
    Click(instrument->forms.MainForm->control<QWidget>("CloseButton"));
    EXPECT_TRUE(Until([&] { return !Face().isVisible(); }));
    EXPECT_EQ(script().calls.back(), "CloseDrvr(77)");
}

} // namespace
