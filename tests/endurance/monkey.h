#pragma once

#include "driver/driver_backend.h"
#include "endurance/whole_instrument.h"

#include <QObject>
#include <QSet>
#include <QTimer>
#include <memory>
#include <random>

class QFileDialog;
class QWindow;

/// Hands that do anything: mouse, wheel and keys wherever a window of the instrument is, its timers in any
/// order, windows resized, moved, minimised and closed, boxes and dialogs answered somehow. It goes through
/// the toolkit's entrance for the window system, so what a box shuts off is shut off for it as well.
///
/// The instrument's timers fire only when it has them fire, so a seed gives the same run again.
class Monkey : public QObject {
  public:
    using MakeDriver = std::function<std::unique_ptr<DriverBackend>(std::mt19937&)>;

    /// folder: with the skins, and for the settings and the files; nothing outside of it is written.
    Monkey(MakeDriver makeDriver, QString folder, std::uint32_t seed, int events);

    /// All events, over as many starts of the program as it takes.
    void Run();
    int Events() const { return events_; }
    int Starts() const { return starts_; }
    int Boxes() const { return boxes_; }
    int Dialogs() const { return dialogs_; }
    int Loops() const { return loops_; } ///< of the toolkit, that had to be left
    /// How many different controls the mouse came down on.
    qsizetype Controls() const { return controls_.size(); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    static constexpr int kDeepest = 3; ///< handlers that may stand between a deed and the event loop

    void Live();
    void Act();
    void Hand(QWindow& window);
    void Wheel(QWindow& window);
    void Keys(QWindow& window);
    void WindowDeed(QWidget& window);
    void PressDeepButton();
    void FireTimer();
    void AnswerBox(const QString& text);
    void AnswerFileDialog(QFileDialog& dialog);
    void KeepInFolder();
    void BreakIn();
    void Rescue();
    void Yield();

    void Mouse(QWindow& window, QPointF at, Qt::MouseButton button, QEvent::Type type);
    void Key(QWindow& window, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers,
             const QString& text);
    QPointF Somewhere(QWidget& window);
    QWidget* SomeWindow();
    QWidget* Aim(QWidget& window);
    int Below(int bound) { return static_cast<int>(random_() % static_cast<std::uint32_t>(bound)); }
    bool Chance(int percent) { return Below(100) < percent; }
    bool Ended() const { return whole_ == nullptr || whole_->instrument.closing.Wanted(); }

    MakeDriver makeDriver_;
    QString folder_;
    std::mt19937 random_;
    int budget_;
    int events_ = 0;
    int starts_ = 0;
    int boxes_ = 0;
    int dialogs_ = 0;
    int loops_ = 0;
    QSet<QString> controls_;
    int depth_ = 0; ///< how many handlers stand between this deed and the event loop
    bool firing_ = false;
    Qt::MouseButtons held_ = Qt::NoButton;
    int clock_ = 1; ///< milliseconds, of the events
    QTimer rescue_;
    std::unique_ptr<WholeInstrument> whole_;
};
