#include "window/keyed_panel.h"

#include <QCheckBox>
#include <QDir>
#include <QProcess>
#include <set>
#include <utility>

namespace {

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

/// Where the keyboard is in the panel, and that it shows.
class Focus : public KeyedPanel {
  protected:
    /// Whether a pointer there would find the control, or a part of it.
    static bool Reaches(const QWidget& control) {
        const QWidget* top = QApplication::widgetAt(control.mapToGlobal(control.rect().center()));
        return top != nullptr && (top == &control || control.isAncestorOf(top));
    }
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
    /// In the panel in front, one stop after another.
    template <class Condition> void TabUntil(Condition condition) {
        while (!condition()) {
            QWidget* const before = Face().focusWidget();
            real_keys::Press("Tab");
            ASSERT_TRUE(Until([&] { return Face().focusWidget() != before; }));
        }
    }
};

TEST_F(Focus, TabGoesThroughWhatIsInViewAndNothingElse) {
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
    TabUntil([&] { return SlotsOf({Face().focusWidget()}) == std::set<int>{kMathTab}; });
    const QWidget* lost = Face().focusWidget();
    real_keys::Press("Escape Escape");
    ASSERT_TRUE(Until([&] { return !record->TabOpen[kMathTab] && !record->TabOpen[2]; }));
    EXPECT_TRUE(Until([&] { return Face().focusWidget() != lost; }));
    EXPECT_EQ(SlotsOf(Round("Tab")), std::set<int>{0});
    ShutDown(*instrument);
}

TEST_F(Focus, KeysStayWhereTheyWereWhileTheMeasurementsComeInFront) {
    Begin();
    auto* zoom = Main<KnobControl1>("HorizZoomKnob");
    TabUntil([&] { return Face().focusWidget() == zoom; });
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

TEST_F(Focus, AHiddenControlIsNoStopAndNoKeyTurnsIt) {
    Begin();
    auto* knob = Main<KnobControl1>("TimeBaseKnob");
    TabUntil([&] { return Face().focusWidget() == knob; });
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

TEST_F(Focus, TheRingIsSeenAtEveryStopAndIsStillThereAfterAnotherWindowWasInFront) {
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
