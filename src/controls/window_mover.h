#pragma once

#include <QObject>
#include <QPoint>
#include <functional>

class QMouseEvent;
class QWidget;
class QWindow;

/// Lets a window without a frame be moved by one of its widgets, as by a title bar: by the left button alone,
/// only while it is down, and only once the pointer has gone the platform's drag distance, so that a mere
/// click stays a click.
class WindowMover : public QObject {
    Q_OBJECT
  public:
    /// Hands the move over to the window system; false where that cannot be, and the window then follows the
    /// pointer by itself.
    using SystemMove = std::function<bool(QWindow& window)>;

    /// Belongs to the grip and moves its window. Presses that children of the grip leave alone count too.
    explicit WindowMover(QWidget& grip);
    WindowMover(QWidget& grip, SystemMove systemMove);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class State { Idle, Pressed, Following, HandedOver };

    void Press(const QMouseEvent& event);
    void Move(const QMouseEvent& event);
    void Follow(QPoint pointer);

    QWidget& grip_;
    SystemMove systemMove_;
    State state_ = State::Idle;
    QPoint pressed_; ///< of the pointer on the screen
    QPoint hold_;    ///< from the window's place to the pointer
};
