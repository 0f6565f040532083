#include "frame/instrument/instrument_fixture.h"

#include "controls/button_control.h"
#include "controls/knob_control.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QTest>
#include <QUrl>
#include <set>

using testing::Contains;
using testing::Each;
using testing::IsEmpty;
using testing::Not;

/// Takes the place of the desktop's viewer.
class Viewer : public QObject {
    Q_OBJECT
  public:
    QList<QUrl> opened;
  public slots:
    void Open(const QUrl& url) { opened << url; }
};

class KeysTest : public InstrumentTest {
  protected:
    void Begin(int modules = 2) {
        Start(modules);
        surface = instrument->forms.surface.get();
        GoTo(*surface);
    }
    /// The window that the keys go to from now on, whichever one else is shown.
    void GoTo(QWidget& window) {
        front = &window;
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                window.activateWindow();
                return window.isActiveWindow();
            },
            30000));
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        GoTo(*front);
        QTest::keyClick(front->focusWidget() != nullptr ? front->focusWidget() : front, key, modifiers);
    }
    void ClickTab(int slot) {
        auto* header = instrument->forms.TabForm[slot]->control<Picture>("Image1");
        emit header->MouseDown(Qt::LeftButton, {});
        instrument->tabPanels->TabTimer_Timer();
    }
    Form* PartOf(QWidget* control) const {
        for (QWidget* widget = control; widget != nullptr; widget = widget->parentWidget()) {
            if (auto* form = qobject_cast<Form*>(widget)) {
                return form;
            }
        }
        return nullptr;
    }
    /// The parts through which Tab goes until it is where it was.
    std::set<Form*> Round(Qt::Key key = Qt::Key_Tab) {
        std::set<Form*> parts;
        std::set<QWidget*> seen;
        for (;;) {
            Press(key);
            QWidget* control = surface->focusWidget();
            if (control == nullptr || !seen.insert(control).second) {
                return parts;
            }
            EXPECT_TRUE(control->isVisible());
            parts.insert(PartOf(control));
        }
    }
    Form* Panel(int slot) const { return instrument->forms.TabForm[slot]; }

    Surface* surface = nullptr;
    QWidget* front = nullptr;
};

TEST_F(KeysTest, DoWhatTheirButtonsDo) {
    Begin();
    EXPECT_TRUE(record->Running);
    Press(Qt::Key_R);
    EXPECT_FALSE(record->Running);
    Press(Qt::Key_S);
    EXPECT_TRUE(record->Running && instrument->acquisition.OnceMode);
    Press(Qt::Key_S);
    EXPECT_FALSE(instrument->acquisition.OnceMode);
    const int mode = record->TrigMode;
    Press(Qt::Key_T);
    EXPECT_EQ(record->TrigMode, (mode + 1) % 3);
    const bool on = record->ChannelOn[2];
    Press(Qt::Key_2);
    EXPECT_EQ(record->ChannelOn[2], !on);
    const bool dots = record->SampleDots;
    Press(Qt::Key_D);
    EXPECT_EQ(record->SampleDots, !dots);
    auto* zoom = instrument->forms.MainForm->control<KnobControl1>("HorizZoomKnob");
    zoom->SetKnobValue(7);
    Press(Qt::Key_N);
    EXPECT_EQ(zoom->KnobValue(), 1);
    EXPECT_FALSE(instrument->closing.Wanted());
    Press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return instrument->closing.Served(); }, 30000));
}

TEST_F(KeysTest, AChannelWithoutAModuleStaysAsItIs) {
    Begin();
    const bool on = record->ChannelOn[4];
    Press(Qt::Key_4);
    EXPECT_EQ(record->ChannelOn[4], on);
}

TEST_F(KeysTest, TheLargeWindowComesAndItsOwnKeysPutItAway) {
    Begin();
    Press(Qt::Key_L);
    EXPECT_TRUE(instrument->shell->FullScreenOn);
    GoTo(*instrument->forms.FullScreenTimeForm);
    Press(Qt::Key_R);
    EXPECT_FALSE(record->Running);
    Press(Qt::Key_L);
    EXPECT_FALSE(instrument->shell->FullScreenOn);
    EXPECT_FALSE(instrument->forms.FullScreenTimeForm->isVisible());
}

TEST_F(KeysTest, ThePictureIsThatOfTheWindowInFront) {
    Begin();
    QGuiApplication::clipboard()->clear();
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), surface->size());
    Press(Qt::Key_L);
    Form* large = instrument->forms.FullScreenTimeForm.get();
    GoTo(*large);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), large->size());
}

TEST_F(KeysTest, F1OpensTheGuide) {
    Begin();
    Viewer viewer;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &viewer, "Open");
    Press(Qt::Key_F1);
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    ASSERT_EQ(viewer.opened.size(), 1);
    EXPECT_TRUE(viewer.opened[0].path().endsWith(QStringLiteral("UsersGuide/Corvantineug.pdf")));
}

TEST_F(KeysTest, CtrlSAsksForAFile) {
    Begin();
    Press(Qt::Key_S, Qt::ControlModifier);
    QWidget* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    dialog->close();
}

TEST_F(KeysTest, EscPushesTheForemostPanelBackAndThenTheNext) {
    Begin();
    ClickTab(1);
    ClickTab(kMathTab);
    Press(Qt::Key_Escape);
    EXPECT_TRUE(record->TabOpen[1]);
    EXPECT_FALSE(record->TabOpen[kMathTab]);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(record->TabOpen[1]);
    Press(Qt::Key_Escape); // none is out
    for (int slot = 1; slot <= kTabSlots; ++slot) {
        EXPECT_FALSE(record->TabOpen[slot]);
    }
}

TEST_F(KeysTest, TabStaysOnTheFaceWhileNoPanelIsOut) {
    Begin();
    EXPECT_EQ(Round(), std::set<Form*>{instrument->forms.MainForm});
    EXPECT_EQ(Round(Qt::Key_Backtab), std::set<Form*>{instrument->forms.MainForm});
}

TEST_F(KeysTest, TabReachesThePanelThatIsInView) {
    Begin();
    ClickTab(1);
    EXPECT_EQ(Round(), (std::set<Form*>{instrument->forms.MainForm, Panel(1)}));
    ClickTab(kHorzTab); // hangs at the same place, over the first
    EXPECT_EQ(Round(), (std::set<Form*>{instrument->forms.MainForm, Panel(kHorzTab)}));
    ClickTab(kHorzTab);
    ClickTab(1);
    EXPECT_EQ(Round(), std::set<Form*>{instrument->forms.MainForm});
}

TEST_F(KeysTest, AControlThatGoesOutOfReachLosesTheKeyboard) {
    Begin();
    ClickTab(1);
    auto* knob = Panel(1)->control<KnobControl1>("VoltsKnob");
    GoTo(*surface);
    knob->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(knob->hasFocus());
    ClickTab(1);
    EXPECT_FALSE(knob->hasFocus());
    const int value = knob->KnobValue();
    Press(Qt::Key_Up);
    EXPECT_EQ(knob->KnobValue(), value);
    Press(Qt::Key_Tab);
    ASSERT_NE(surface->focusWidget(), nullptr);
    EXPECT_EQ(PartOf(surface->focusWidget()), instrument->forms.MainForm);
}

TEST_F(KeysTest, AControlHiddenByItsPropertyIsNoStop) {
    Begin();
    const Form* main = instrument->forms.MainForm;
    main->control<KnobControl1>("TimeBaseKnob")->SetKnobVisible(false);
    main->control<ButtonControl1>("TrigModeButton")->SetButtonVisible(false);
    main->control<SliderControl1>("VertPanSlider")->SetSliderVisible(false);
    std::set<QWidget*> seen;
    for (;;) {
        Press(Qt::Key_Tab);
        if (!seen.insert(surface->focusWidget()).second) {
            break;
        }
    }
    EXPECT_GT(seen.size(), 5U);
    EXPECT_EQ(seen.count(main->control<QWidget>("TimeBaseKnob")), 0U);
    EXPECT_EQ(seen.count(main->control<QWidget>("TrigModeButton")), 0U);
    EXPECT_EQ(seen.count(main->control<QWidget>("VertPanSlider")), 0U);
    main->control<KnobControl1>("TimeBaseKnob")->SetKnobVisible(true);
    std::set<QWidget*> again;
    for (;;) {
        Press(Qt::Key_Tab);
        if (!again.insert(surface->focusWidget()).second) {
            break;
        }
    }
    EXPECT_EQ(again.count(main->control<QWidget>("TimeBaseKnob")), 1U);
}

#include "frame/record/record.h"
#include "keys_test.moc"
