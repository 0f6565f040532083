#include "endurance/monkey.h"

#include "controls/button_control.h"
#include "endurance/last_words.h"
#include "frame/instrument/shut_down.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QScreen>
#include <QTest>
#include <QTimerEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr int kLife = 20000; ///< events after which the program is ended, if nobody did
constexpr QSize kLargest(1700, 1100);

constexpr int kKeys[] = {Qt::Key_Tab,   Qt::Key_Backtab, Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Up,
                         Qt::Key_Down,  Qt::Key_Space,   Qt::Key_Return, Qt::Key_Enter,    Qt::Key_Escape,
                         Qt::Key_Home,  Qt::Key_End,     Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Plus,
                         Qt::Key_Minus, Qt::Key_Comma,   Qt::Key_Period, Qt::Key_Delete,   Qt::Key_Backspace,
                         Qt::Key_Menu,  Qt::Key_Insert,  Qt::Key_Print,  Qt::Key_Percent};
constexpr Qt::KeyboardModifier kModifiers[] = {Qt::NoModifier,    Qt::NoModifier,      Qt::NoModifier,
                                               Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier,
                                               Qt::KeypadModifier};
/// One the instrument made: not of the toolkit's dialogs or of what floats.
bool IsInstruments(const QObject* object) {
    for (; object != nullptr; object = object->parent()) {
        if (qobject_cast<const QDialog*>(object) != nullptr) {
            return false;
        }
        if (qobject_cast<const Form*>(object) != nullptr || object->inherits("Surface")) {
            return true;
        }
    }
    return false;
}

} // namespace

Monkey::Monkey(MakeDriver makeDriver, QString folder, std::uint32_t seed, int events)
    : makeDriver_(std::move(makeDriver)), folder_(std::move(folder)), random_(seed), budget_(events) {
    connect(&rescue_, &QTimer::timeout, this, &Monkey::Rescue);
    rescue_.start(2);
    QApplication::instance()->installEventFilter(this);
}

void Monkey::Run() {
    while (events_ < budget_) {
        // As main does: the program's own loop, which its close ends.
        QTimer::singleShot(0, this, &Monkey::Live);
        QApplication::exec();
    }
}

void Monkey::Live() {
    LastWords::Say("start %d", ++starts_);
    held_ = Qt::NoButton;
    whole_ = std::make_unique<WholeInstrument>(
        makeDriver_(random_),
        WholeInstrument::Surroundings{.folder = folder_,
                                      .show = [this](const QString& text) { AnswerBox(text); },
                                      .yield = [this] { Yield(); },
                                      .commandLine = Chance(20) ? "DEBUG" : ""});
    const Closing& closing = whole_->instrument.closing;
    whole_->Start();
    for (const int end = std::min(budget_, events_ + kLife); !closing.Wanted() && events_ < end;) {
        Act();
        if (Chance(40)) {
            QCoreApplication::processEvents();
        }
    }
    LastWords::Say("end");
    whole_->End();
    whole_.reset();
    for (QWidget* left : QApplication::topLevelWidgets()) {
        if (left->isVisible()) {
            left->close();
        }
    }
    QCoreApplication::processEvents();
    QApplication::exit();
}

void Monkey::Act() {
    if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); dialog && Chance(15)) {
        AnswerFileDialog(*dialog);
        return;
    }
    if (QApplication::activeModalWidget() == nullptr && Below(150) == 0) {
        PressDeepButton();
        return;
    }
    QWidget* window = SomeWindow();
    if (window == nullptr || window->windowHandle() == nullptr || Chance(8)) {
        FireTimer();
        ++events_;
        return;
    }
    QWindow& handle = *window->windowHandle();
    const int kind = Below(100);
    if (kind < 62) {
        Hand(handle);
    } else if (kind < 74) {
        Wheel(handle);
    } else if (kind < 95) {
        Keys(handle);
    } else {
        WindowDeed(*window);
    }
    KeepInFolder();
}

// One of those that seldom lie in front, such as the one that saves and the one that opens the offset's
// dialog.
void Monkey::PressDeepButton() {
    if (whole_ == nullptr || whole_->instrument.forms.surface == nullptr) {
        return;
    }
    const auto buttons = whole_->instrument.forms.surface->findChildren<ButtonControl1*>();
    if (buttons.isEmpty()) {
        return;
    }
    // Of them all the one that saves has the most behind it.
    ButtonControl1* button =
        Chance(70)
            ? buttons[Below(static_cast<int>(buttons.size()))]
            : whole_->instrument.forms.surface->findChild<ButtonControl1*>(QStringLiteral("SaveDataButton"));
    if (button != nullptr && button->isVisible() && button->objectName() != QLatin1String("CloseButton")) {
        LastWords::Say("%d: button %s", events_, qPrintable(button->objectName()));
        events_ += 2;
        WholeInstrument::Click(*button);
    }
}

// Popups and boxes first, as they lie in front.
QWidget* Monkey::SomeWindow() {
    if (QWidget* popup = QApplication::activePopupWidget(); popup && Chance(80)) {
        return popup;
    }
    if (QWidget* box = QApplication::activeModalWidget(); box && Chance(80)) {
        return box;
    }
    std::vector<QWidget*> windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible()) {
            windows.push_back(widget);
            if (widget->inherits("Surface")) {
                windows.insert(windows.end(), 4, widget); // most of the controls are there
            }
        }
    }
    // The toolkit tells them in an order of addresses.
    std::stable_sort(windows.begin(), windows.end(), [](const QWidget* a, const QWidget* b) {
        return std::pair(a->windowTitle(), a->objectName()) < std::pair(b->windowTitle(), b->objectName());
    });
    return windows.empty() ? nullptr
                           : windows[static_cast<std::size_t>(Below(static_cast<int>(windows.size())))];
}

QWidget* Monkey::Aim(QWidget& window) {
    const QList<QWidget*> all = window.findChildren<QWidget*>();
    for (int tries = 0; tries < 12 && !all.isEmpty(); ++tries) {
        QWidget* aim = all[Below(static_cast<int>(all.size()))];
        // The program is closed often enough.
        if (aim->isVisible() && aim->window() == &window &&
            (aim->objectName() != QLatin1String("CloseButton") || Chance(4))) {
            return aim;
        }
    }
    return &window;
}

QPointF Monkey::Somewhere(QWidget& window) {
    if (Chance(4)) {
        return {Below(window.width() + 200) - 100.0, Below(window.height() + 200) - 100.0};
    }
    QWidget* aim = Chance(80) ? Aim(window) : &window;
    return aim->mapTo(&window, QPoint(Below(std::max(aim->width(), 1)), Below(std::max(aim->height(), 1))));
}

void Monkey::Mouse(QWindow& window, QPointF at, Qt::MouseButton button, QEvent::Type type) {
    if (type == QEvent::MouseButtonPress) {
        held_ |= button;
    } else if (type == QEvent::MouseButtonRelease) {
        held_ &= ~Qt::MouseButtons(button);
    }
    LastWords::Say("%d: mouse %d button %d at %g,%g of %s", events_, static_cast<int>(type), button, at.x(),
                   at.y(), qPrintable(window.objectName() + window.title()));
    ++events_;
    clock_ += Chance(50) ? 20 : 700;
    qt_handleMouseEvent(&window, at, window.mapToGlobal(at), held_, button, type,
                        kModifiers[Chance(90) ? 0 : Below(std::size(kModifiers))], clock_);
}

void Monkey::Hand(QWindow& first) {
    const QPointer<QWindow> window(&first);
    auto* widget = QWidget::find(first.winId());
    if (widget == nullptr) {
        return;
    }
    const auto button = Chance(85) ? Qt::LeftButton : Chance(60) ? Qt::RightButton : Qt::MiddleButton;
    const QPointF at = Somewhere(*widget);
    Mouse(*window, at, Qt::NoButton, QEvent::MouseMove);
    for (int clicks = Chance(10) ? 2 : 1; clicks > 0 && window; --clicks) {
        Mouse(*window, at, button, QEvent::MouseButtonPress);
        QPointF to = at;
        for (int moves = Chance(50) ? 0 : Below(8); moves > 0 && window; --moves) {
            to = Chance(80) || !QWidget::find(window->winId()) ? to + QPointF(Below(41) - 20, Below(41) - 20)
                                                               : Somewhere(*QWidget::find(window->winId()));
            Mouse(*window, to, Qt::NoButton, QEvent::MouseMove);
            if (Chance(20)) {
                FireTimer();
            }
        }
        // A hand may let go somewhere else, where nobody sees it.
        if (window && Chance(97)) {
            Mouse(*window, to, button, QEvent::MouseButtonRelease);
        }
    }
}

void Monkey::Wheel(QWindow& window) {
    auto* widget = QWidget::find(window.winId());
    if (widget == nullptr) {
        return;
    }
    const QPointF at = Somewhere(*widget);
    const QPoint angle =
        Chance(10) ? QPoint(Below(2001) - 1000, Below(2001) - 1000) : QPoint(0, Chance(50) ? 120 : -120);
    LastWords::Say("%d: wheel %d,%d at %g,%g of %s", events_, angle.x(), angle.y(), at.x(), at.y(),
                   qPrintable(window.objectName() + window.title()));
    ++events_;
    QWheelEvent event(at, window.mapToGlobal(at), {}, angle, held_, kModifiers[Below(std::size(kModifiers))],
                      Qt::NoScrollPhase, Chance(5));
    QCoreApplication::sendEvent(&window, &event);
}

void Monkey::Key(QWindow& window, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers,
                 const QString& text) {
    LastWords::Say("%d: key %d %#x with %#x to %s", events_, static_cast<int>(type), key,
                   static_cast<unsigned>(modifiers), qPrintable(window.objectName() + window.title()));
    ++events_;
    qt_handleKeyEvent(&window, type, key, modifiers, text, Chance(10));
}

void Monkey::Keys(QWindow& first) {
    const QPointer<QWindow> window(&first);
    int key = kKeys[Below(std::size(kKeys))];
    QString text;
    if (Chance(50)) {
        key = Chance(50) ? Qt::Key_0 + Below(10) : Qt::Key_A + Below(26);
        text = QChar(Chance(50) ? QChar(key).toLower() : QChar(key));
    } else if (Chance(10)) {
        key = Qt::Key_F1 + Below(12);
    }
    const Qt::KeyboardModifiers modifiers = kModifiers[Below(std::size(kModifiers))];
    // The program is closed often enough, here too.
    if (modifiers == Qt::ControlModifier && (key == Qt::Key_Q || key == Qt::Key_W) && !Chance(4)) {
        return;
    }
    Key(*window, QEvent::KeyPress, key, modifiers, text);
    if (window && Chance(97)) {
        Key(*window, QEvent::KeyRelease, key, modifiers, text);
    }
}

void Monkey::WindowDeed(QWidget& window) {
    const int deed = Below(100);
    LastWords::Say("%d: window deed %d on %s", events_, deed,
                   qPrintable(window.objectName() + window.windowTitle()));
    ++events_;
    const bool surface = window.inherits("Surface");
    if (deed < 30) {
        window.resize(1 + Below(kLargest.width()), 1 + Below(kLargest.height()));
    } else if (deed < 46) {
        window.move(Below(3000) - 1000, Below(2000) - 600);
    } else if (deed < 52) {
        const QList<QScreen*> screens = QGuiApplication::screens();
        if (window.windowHandle() != nullptr) {
            window.windowHandle()->setScreen(screens[Below(static_cast<int>(screens.size()))]);
        }
    } else if (deed < 60) {
        window.showMinimized();
    } else if (deed < 80) {
        window.showNormal();
    } else if (deed < 84) {
        window.showMaximized();
    } else if (deed < 88) {
        window.lower();
    } else if (deed < 94) {
        window.activateWindow();
        window.raise();
    } else if (!surface || Chance(4)) {
        window.close();
    }
}

void Monkey::FireTimer() {
    if (whole_ == nullptr) {
        return;
    }
    const Forms& forms = whole_->instrument.forms;
    std::vector<QTimer*> timers;
    for (const QWidget* window :
         std::initializer_list<const QWidget*>{forms.surface.get(), forms.StatsForm, forms.OffsetNullForm,
                                               forms.FFTForm.get(), forms.FullScreenTimeForm.get()}) {
        if (window != nullptr) {
            for (QTimer* timer : window->findChildren<QTimer*>()) {
                if (timer->isActive()) {
                    timers.push_back(timer);
                    if (timer->objectName() == QLatin1String("RunTimer")) {
                        timers.insert(timers.end(), 4, timer);
                    }
                }
            }
        }
    }
    if (timers.empty()) {
        return;
    }
    QTimer* timer = timers[static_cast<std::size_t>(Below(static_cast<int>(timers.size())))];
    LastWords::Say("%d: timer %s", events_, qPrintable(timer->objectName()));
    QTimerEvent event(timer->timerId());
    firing_ = true;
    QCoreApplication::sendEvent(timer, &event);
    firing_ = false;
}

bool Monkey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Timer && qobject_cast<QTimer*>(watched) != nullptr) {
        // The clock has no say: what is due when would differ from run to run.
        return !std::exchange(firing_, false) && IsInstruments(watched);
    }
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType() &&
        !watched->objectName().isEmpty()) {
        controls_.insert(watched->objectName());
    }
    if (event->type() == QEvent::Show) {
        if (auto* dialog = qobject_cast<QFileDialog*>(watched)) {
            ++dialogs_;
            // It is not the files of whoever runs this that are on trial.
            dialog->setOption(QFileDialog::ReadOnly);
            dialog->setDirectory(folder_ + "/files");
        }
    }
    return false;
}
