#include "window/front_panel.h"
#include "window/real_keys.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QProcess>
#include <QUrl>
#include <set>
#include <tuple>
#include <utility>

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

/// A window of another program.
class Stranger {
  public:
    Stranger() {
        program_.start(QStringLiteral("xev"), {QStringLiteral("-name"), name_, QStringLiteral("-geometry"),
                                               QStringLiteral("300x200+20+20")});
        // Nobody reads what it tells, and a pipe that is full would stop it.
        program_.closeReadChannel(QProcess::StandardOutput);
    }
    ~Stranger() {
        program_.kill();
        program_.waitForFinished();
    }
    void ComeInFront() const {
        // In a corner, where it covers nothing.
        real_mouse::Do({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
                        QStringLiteral("--name"), QStringLiteral("^%1$").arg(name_),
                        QStringLiteral("windowmove"), QStringLiteral("--sync"), QStringLiteral("85%"),
                        QStringLiteral("85%"), QStringLiteral("windowactivate")});
    }

  private:
    const QString name_ = QStringLiteral("stranger");
    QProcess program_;
};

/// The program on four simulated modules, worked with a real keyboard.
class Keys : public FrontPanel {
  protected:
    void Begin() {
        Start();
        ASSERT_TRUE(real_keys::GoTo(Face()));
    }
    Surface& Face() { return *instrument->forms.surface; }
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
    void PullOut(int slot) {
        QWidget* panel = instrument->forms.TabForm[slot];
        const int closed = panel->x();
        emit Tab<Picture>(slot, "Image1")->MouseDown(Qt::LeftButton, {});
        const int travel = Main<QWidget>("TabSliderAnchorImage")->width();
        ASSERT_TRUE(Until([&] { return record->TabOpen[slot] && panel->x() == closed + travel; }));
    }
    /// Whether a pointer there would find the control, or a part of it.
    static bool Reaches(const QWidget& control) {
        const QWidget* top = QApplication::widgetAt(control.mapToGlobal(control.rect().center()));
        return top != nullptr && (top == &control || control.isAncestorOf(top));
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

    QImage Photograph(const QWidget& control) {
        const QPoint at = control.mapToGlobal(QPoint(0, 0));
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, at.x(), at.y(), control.width(), control.height())
            .toImage();
    }
    /// The first picture of two that are the same: whatever is drawn later has been drawn.
    QImage Settled(const QWidget& control) {
        QImage picture = Photograph(control);
        EXPECT_TRUE(Until([&] {
            QTest::qWait(120);
            const QImage later = Photograph(control);
            return std::exchange(picture, later) == later;
        }));
        return picture;
    }
    /// A picture of the panel for the eye, where CORVANTINE_SHOTS names a folder.
    void Shoot(const QString& name) {
        const QString folder = qEnvironmentVariable("CORVANTINE_SHOTS");
        if (!folder.isEmpty()) {
            Photograph(Face()).save(QDir(folder).filePath(name + QStringLiteral(".png")));
        }
    }

    /// Presses the key until the focus is where it was; every control on the way. To be called with the panel
    /// in front.
    std::vector<QWidget*> Round(const char* key, const std::function<void(QWidget&)>& at = {}) {
        std::vector<QWidget*> stops;
        for (;;) {
            QWidget* const before = Face().focusWidget();
            real_keys::Press(key);
            if (!Until([&] { return Face().focusWidget() != before; })) {
                ADD_FAILURE() << key << " went nowhere from "
                              << (before == nullptr ? "" : qPrintable(before->objectName()));
                return stops;
            }
            QWidget* const control = Face().focusWidget();
            if (control == nullptr || std::find(stops.begin(), stops.end(), control) != stops.end()) {
                return stops;
            }
            EXPECT_TRUE(Reaches(*control)) << control->objectName().toStdString() << " is covered";
            stops.push_back(control);
            if (at) {
                at(*control);
            }
        }
    }
    /// The slots of the panels that these belong to; 0 is the face.
    std::set<int> SlotsOf(const std::vector<QWidget*>& controls) {
        std::set<int> slots_;
        for (const QWidget* control : controls) {
            int found = instrument->forms.MainForm->isAncestorOf(control) ? 0 : -1;
            for (int slot = 1; slot <= kTabSlots; ++slot) {
                found = instrument->forms.TabForm[slot]->isAncestorOf(control) ? slot : found;
            }
            slots_.insert(found);
        }
        return slots_;
    }
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

TEST_F(Keys, TabGoesThroughWhatIsInViewAndNothingElse) {
    Begin();
    std::vector<QWidget*> stops = Round("Tab");
    EXPECT_EQ(SlotsOf(stops), std::set<int>{0});
    EXPECT_GT(stops.size(), 12U);
    for (const char* name : {"RunButton", "TimeBaseKnob", "TriggerKnob", "VertPanSlider", "CloseButton"}) {
        EXPECT_EQ(std::count(stops.begin(), stops.end(), Main<QWidget>(name)), 1) << name;
    }
    std::vector<QWidget*> back = Round("shift+Tab");
    EXPECT_EQ(std::set<QWidget*>(back.begin(), back.end()), std::set<QWidget*>(stops.begin(), stops.end()));

    PullOut(2);
    stops = Round("Tab");
    EXPECT_EQ(SlotsOf(stops), (std::set<int>{0, 2}));
    EXPECT_EQ(std::count(stops.begin(), stops.end(), Tab<QWidget>(2, "VoltsKnob")), 1);
    PullOut(kMathTab); // hangs at the same place, over the other
    EXPECT_EQ(SlotsOf(Round("Tab")), (std::set<int>{0, kMathTab}));

    // A control that has the focus when its panel goes gives it up.
    ASSERT_TRUE(real_keys::GoTo(Face()));
    while (SlotsOf({Face().focusWidget()}) != std::set<int>{kMathTab}) {
        QWidget* const before = Face().focusWidget();
        real_keys::Press("Tab");
        ASSERT_TRUE(Until([&] { return Face().focusWidget() != before; }));
    }
    const QWidget* lost = Face().focusWidget();
    real_keys::Press("Escape Escape");
    ASSERT_TRUE(Until([&] { return !record->TabOpen[kMathTab] && !record->TabOpen[2]; }));
    EXPECT_TRUE(Until([&] { return Face().focusWidget() != lost; }));
    EXPECT_EQ(SlotsOf(Round("Tab")), std::set<int>{0});
    ShutDown(*instrument);
}

TEST_F(Keys, TheyStayWhereTheyWereWhileTheMeasurementsComeInFront) {
    Begin();
    auto* zoom = Main<KnobControl1>("HorizZoomKnob");
    while (Face().focusWidget() != zoom) {
        QWidget* const before = Face().focusWidget();
        real_keys::Press("Tab");
        ASSERT_TRUE(Until([&] { return Face().focusWidget() != before; }));
    }
    for (int value = 2; value <= 5; ++value) {
        real_keys::Press("Up");
        ASSERT_TRUE(Until([&] { return zoom->KnobValue() == value; })) << "the keys are lost at " << value;
    }
    real_keys::Press("n");
    ASSERT_TRUE(Until([&] { return zoom->KnobValue() == 1; }));
    real_keys::Press("Up");
    EXPECT_TRUE(Until([&] { return zoom->KnobValue() == 2; }));
    // A click on the measurements, which a hand moves them by, leaves the keys where they are.
    real_mouse::Click(*instrument->forms.StatsForm, QPointF(4, 6));
    real_keys::Press("Up");
    EXPECT_TRUE(Until([&] { return zoom->KnobValue() == 3; }));
    EXPECT_TRUE(Face().isActiveWindow());
    ShutDown(*instrument);
}

TEST_F(Keys, AHiddenControlIsNoStopAndNoKeyTurnsIt) {
    Begin();
    auto* knob = Main<KnobControl1>("TimeBaseKnob");
    while (Face().focusWidget() != knob) {
        QWidget* const before = Face().focusWidget();
        real_keys::Press("Tab");
        ASSERT_TRUE(Until([&] { return Face().focusWidget() != before; }));
    }
    const int value = knob->KnobValue();
    real_keys::Press("Up");
    ASSERT_TRUE(Until([&] { return knob->KnobValue() != value; }));
    const int turned = knob->KnobValue();
    knob->SetKnobVisible(false);
    Main<ButtonControl1>("TrigModeButton")->SetButtonVisible(false);
    Main<SliderControl1>("VertPanSlider")->SetSliderVisible(false);
    real_keys::Press("Up");
    const std::vector<QWidget*> stops = Round("Tab");
    EXPECT_GT(stops.size(), 10U);
    for (const char* name : {"TimeBaseKnob", "TrigModeButton", "VertPanSlider"}) {
        EXPECT_EQ(std::count(stops.begin(), stops.end(), Main<QWidget>(name)), 0) << name;
    }
    EXPECT_EQ(knob->KnobValue(), turned);
    knob->SetKnobVisible(true);
    const std::vector<QWidget*> again = Round("Tab");
    EXPECT_EQ(std::count(again.begin(), again.end(), knob), 1);
    ShutDown(*instrument);
}

TEST_F(Keys, TheRingIsSeenAtEveryStopAndIsStillThereAfterAnotherWindowWasInFront) {
    Begin();
    Face().MoveTo(60, 60);
    instrument->runLoop->RunButton_Click(); // nothing but the focus changes the picture
    real_mouse::Do({QStringLiteral("mousemove"), QStringLiteral("1900"), QStringLiteral("1060")});
    const Stranger stranger;
    stranger.ComeInFront();
    ASSERT_TRUE(real_keys::GoTo(Face()));
    std::set<std::string> kinds;
    const auto look = [&](const QImage& plain, QWidget& control) {
        const std::string name = control.objectName().toStdString();
        const std::string kind = control.metaObject()->className();
        const double ratio = Face().devicePixelRatioF();
        const QRectF place(QPointF(control.mapTo(&Face(), QPoint(0, 0))) * ratio,
                           QSizeF(control.size()) * ratio);
        const QImage unfocused = plain.copy(place.toRect());
        EXPECT_TRUE(Until([&] { return Photograph(control) != unfocused; })) << name << " shows no focus";
        if (!kinds.insert(kind).second) {
            return;
        }
        const QImage ringed = Settled(control);
        Shoot(QStringLiteral("focus_%1").arg(QString::fromStdString(kind)));
        stranger.ComeInFront();
        EXPECT_TRUE(Until([&] { return !Face().isActiveWindow() && Photograph(control) != ringed; }))
            << kind << " shows a focus that it has not";
        ASSERT_TRUE(real_keys::GoTo(Face()));
        EXPECT_EQ(Face().focusWidget(), &control);
        EXPECT_TRUE(Until([&] { return Photograph(control) == ringed; })) << kind << " has lost its focus";
    };
    Tab<QCheckBox>(kCursTab, "VertCursorEn", 0)->click(); // its handle is a stop
    for (const int slot : {1, int{kMathTab}, int{kDataTab}, int{kCursTab}, int{kHorzTab}, int{kAboutTab}}) {
        PullOut(slot);
        if (QWidget* control = Face().focusWidget()) {
            control->clearFocus();
        }
        const QImage plain = Settled(Face());
        Round("Tab", [&](QWidget& control) { look(plain, control); });
        real_keys::Press("Escape");
        ASSERT_TRUE(Until([&] { return !record->TabOpen[slot]; }));
    }
    for (const char* kind : {"ButtonControl1", "KnobControl1", "SliderControl1", "UserControl2", "Picture",
                             "QCheckBox", "QComboBox"}) {
        EXPECT_EQ(kinds.count(kind), 1U) << kind;
    }
    ShutDown(*instrument);
}

} // namespace

#include "frame/record/record.h"
#include "keyboard_window_test.moc"
