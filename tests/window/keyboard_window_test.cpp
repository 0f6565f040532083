#include "window/keyed_panel.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFileDialog>
#include <QLineEdit>
#include <QUrl>
#include <tuple>

namespace {

/// Takes the place of the desktop's viewer.
class Viewer : public QObject {
    Q_OBJECT
  public:
    Viewer() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Open"); }
    ~Viewer() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QList<QUrl> opened;
  public slots:
    void Open(const QUrl& url) { opened << url; }
};

/// Keys that do something wherever the focus is.
class Keys : public KeyedPanel {
  protected:
    Form& Spectrum() { return *instrument->forms.FFTForm; }
    Form& LargeTime() { return *instrument->forms.FullScreenTimeForm; }
    /// A single waits from now on for a trigger that does not come.
    void LeaveTheSignal() {
        auto* level = Main<KnobControl1>("TriggerKnob");
        Turn(*level, 0.5, 0.95);
        ASSERT_TRUE(Until([&] { return level->KnobValue() > 80 && !StatusIsRed(); }));
    }
    void ShowSpectrum() {
        record->ChannelFFT[1] = record->ChannelFFT[2] = true; // one is left while the other is off
        record->ChannelFFT[1] = true;
        ASSERT_TRUE(Until([&] { return Spectrum().isVisible(); }));
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Spectrum(), kPatience));
    }
    void ShowLargeTime() {
        instrument->shell->FullScreenButton_Click();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&LargeTime(), kPatience));
    }
    /// From a window that has the focus: one key and what has to come of it.
    template <class Condition> void Expect(QWidget& window, const char* key, Condition condition) {
        const std::string where = window.objectName().toStdString() + ", " + key;
        if (HasFatalFailure()) {
            return;
        }
        ASSERT_TRUE(real_keys::GoTo(window)) << where;
        real_keys::Press(key);
        EXPECT_TRUE(Until(condition)) << where;
    }
    /// Every key but those that put windows away.
    void ExpectEveryKeyWorksFrom(QWidget& window);
};

void Keys::ExpectEveryKeyWorksFrom(QWidget& window) {
    const int first = record->TrigMode;
    for (int step = 1; step <= 3; ++step) {
        Expect(window, "t", [&] { return record->TrigMode == (first + step) % 3; });
    }
    constexpr int kNormal = 1;
    while (record->TrigMode != kNormal && !HasFailure()) {
        const int mode = record->TrigMode;
        Expect(window, "t", [&] { return record->TrigMode != mode; });
    }
    ASSERT_TRUE(record->Running);
    Expect(window, "r", [&] { return !record->Running; });
    Expect(window, "s", [&] { return record->Running && instrument->acquisition.OnceMode; });
    Expect(window, "s", [&] { return !record->Running && !instrument->acquisition.OnceMode; });
    Expect(window, "r", [&] { return record->Running && !instrument->acquisition.OnceMode; });
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        const bool on = record->ChannelOn[channel];
        const std::string digit = std::to_string(channel);
        Expect(window, digit.c_str(), [&] { return record->ChannelOn[channel] != on; });
        Expect(window, digit.c_str(), [&] { return record->ChannelOn[channel] == on; });
    }
    auto* zoom = Main<KnobControl1>("HorizZoomKnob");
    zoom->SetKnobValue(7);
    Expect(window, "n", [&] { return zoom->KnobValue() == 1; });
    const bool dots = record->SampleDots;
    Expect(window, "d", [&] { return record->SampleDots != dots; });
    Expect(window, "d", [&] { return record->SampleDots == dots; });
    QGuiApplication::clipboard()->clear();
    Expect(window, "ctrl+c", [&] {
        const QImage picture = QGuiApplication::clipboard()->image();
        return picture.size() == window.size() * window.devicePixelRatioF();
    });
    {
        Viewer viewer;
        Expect(window, "F1", [&] { return viewer.opened.size() == 1; });
    }
    Expect(window, "ctrl+s", [&] { return QApplication::activeModalWidget() != nullptr; });
    if (QWidget* dialog = QApplication::activeModalWidget()) {
        Expect(*dialog, "Escape", [&] { return QApplication::activeModalWidget() == nullptr; });
    }
    PullOut(1);
    Expect(window, "Escape", [&] { return !record->TabOpen[1]; });
}

TEST_F(Keys, EveryOneWorksFromThePanel) {
    Begin();
    LeaveTheSignal();
    ExpectEveryKeyWorksFrom(Face());
    Expect(Face(), "l", [&] { return instrument->shell->FullScreenOn && LargeTime().isVisible(); });
    Expect(Face(), "l", [&] { return !instrument->shell->FullScreenOn && !LargeTime().isVisible(); });
    Expect(Face(), "ctrl+q", [&] { return instrument->closing.Served(); });
}

TEST_F(Keys, EveryOneWorksFromTheLargeWindow) {
    Begin();
    LeaveTheSignal();
    ShowLargeTime();
    ExpectEveryKeyWorksFrom(LargeTime());
    Expect(LargeTime(), "l", [&] { return !instrument->shell->FullScreenOn && !LargeTime().isVisible(); });
    Expect(Face(), "l", [&] { return instrument->shell->FullScreenOn && LargeTime().isVisible(); });
    Expect(LargeTime(), "ctrl+q", [&] { return instrument->closing.Served(); });
}

TEST_F(Keys, EveryOneWorksFromTheSpectrum) {
    Begin();
    LeaveTheSignal();
    ShowSpectrum();
    ExpectEveryKeyWorksFrom(Spectrum());
    Expect(Spectrum(), "l", [&] { return instrument->shell->FullScreenOn && LargeTime().isVisible(); });
    Expect(Spectrum(), "l", [&] { return !instrument->shell->FullScreenOn && !LargeTime().isVisible(); });
    Expect(Spectrum(), "ctrl+q", [&] { return instrument->closing.Served(); });
}

TEST_F(Keys, AKeyHeldDownDoesItOnce) {
    Begin();
    ASSERT_TRUE(record->Running);
    // The server repeats it; the digit that follows tells that all repeats have come.
    const bool on = record->ChannelOn[3];
    real_mouse::Do({QStringLiteral("keydown"), QStringLiteral("r"), QStringLiteral("sleep"),
                    QStringLiteral("1.2"), QStringLiteral("keyup"), QStringLiteral("r"),
                    QStringLiteral("key"), QStringLiteral("3")});
    ASSERT_TRUE(Until([&] { return record->ChannelOn[3] != on; }));
    EXPECT_FALSE(record->Running);
    ShutDown(*instrument);
}

TEST_F(Keys, ATextThatIsBeingTypedKeepsThem) {
    Begin();
    auto* knob = Main<KnobControl1>("TriggerKnob");
    knob->SetKnobValueEditable(true);
    auto* edit = knob->findChild<QLineEdit*>(QStringLiteral("KnobValueTextbox"));
    ASSERT_TRUE(Until([&] { return edit->isVisible(); }));
    PullOut(1);
    const auto state = [this] {
        return std::tuple(record->Running, record->TrigMode, record->SampleDots, record->ChannelOn[1]);
    };
    const auto before = state();
    ASSERT_TRUE(real_keys::GoTo(Face()));
    real_mouse::Click(*edit);
    ASSERT_TRUE(Until([&] { return edit->hasFocus(); }));
    Viewer viewer;
    real_keys::Press("ctrl+a r s t n d l F1 ctrl+s ctrl+q 1 7");
    EXPECT_TRUE(Until([&] { return edit->text() == QStringLiteral("rstndl17"); }))
        << qPrintable(edit->text());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    // What was marked goes to the clipboard as a text.
    real_keys::Press("ctrl+a ctrl+c");
    EXPECT_TRUE(Until([&] { return QGuiApplication::clipboard()->text() == QStringLiteral("rstndl17"); }));
    // The first gives the text up, the second is for the panel.
    real_keys::Press("Escape");
    EXPECT_TRUE(Until([&] { return !edit->hasFocus(); }));
    EXPECT_TRUE(record->TabOpen[1]);
    EXPECT_EQ(state(), before);
    EXPECT_FALSE(instrument->shell->FullScreenOn);
    EXPECT_FALSE(instrument->closing.Wanted());
    EXPECT_TRUE(viewer.opened.isEmpty());
    // A figure that is typed is set by Return, and then the keys are the program's again.
    real_mouse::Click(*edit);
    ASSERT_TRUE(Until([&] { return edit->hasFocus(); }));
    real_keys::Press("ctrl+a 2 1 Return");
    EXPECT_TRUE(Until([&] { return knob->KnobValue() == 21; })) << knob->KnobValue();
    Expect(Face(), "r", [&] { return !record->Running; });
    Expect(Face(), "Escape", [&] { return !record->TabOpen[1]; });
    ShutDown(*instrument);
}

TEST_F(Keys, TheNameOfAFileIsATextToo) {
    Begin();
    PullOut(2);
    Expect(Face(), "ctrl+s", [&] { return QApplication::activeModalWidget() != nullptr; });
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(real_keys::GoTo(*dialog));
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(name, nullptr);
    ASSERT_TRUE(Until([&] { return name->hasFocus(); }));
    const bool running = record->Running;
    const bool on = record->ChannelOn[1];
    real_keys::Press("ctrl+a r s t 1 n d l");
    EXPECT_TRUE(Until([&] { return name->text() == QStringLiteral("rst1ndl"); })) << qPrintable(name->text());
    real_keys::Press("Escape");
    EXPECT_TRUE(Until([&] { return QApplication::activeModalWidget() == nullptr; }));
    EXPECT_TRUE(record->TabOpen[2]);
    EXPECT_EQ(record->Running, running);
    EXPECT_EQ(record->ChannelOn[1], on);
    EXPECT_FALSE(instrument->shell->FullScreenOn);
    ShutDown(*instrument);
}

} // namespace

#include "keyboard_window_test.moc"
