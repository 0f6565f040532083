#pragma once

#include "controls/keyboard_focus.h"

#include <QPixmap>
#include <QWidget>
#include <functional>
#include <memory>

struct ValueAccess;

/// Draws into a rectangle of the face in logical pixels; the painter brings the screen's resolution.
using FaceDrawing = std::function<void(QPainter& painter, const QRectF& place)>;

/// A drawing as a pixmap of that many device pixels to a logical one, transparent where it leaves out.
QPixmap RenderDrawing(const FaceDrawing& drawing, QSize size, double ratio);

/// An image control: shows a picture stretched to its size, or one colour, and reports the mouse.
class Picture : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor BackColor READ BackColor WRITE SetBackColor)
  public:
    explicit Picture(QWidget* parent = nullptr);
    ~Picture() override;

    QColor BackColor() const { return back_; }
    void SetBackColor(const QColor& colour);
    void SetPicture(const QPixmap& picture);
    const QPixmap& Image() const { return picture_; }
    /// Shown in place of the picture where the screen is finer, or there is none: the same art at any
    /// resolution. The picture stays what outlines and colours are taken from. An empty function takes the
    /// drawing away.
    void SetDrawing(FaceDrawing drawing);
    /// Makes the picture one that stands for a value, to assistive technology.
    void SetValueAccess(ValueAccess access);
    const ValueAccess* Value() const { return value_.get(); }

  signals:
    void MouseDown(Qt::MouseButton button, QPoint position);
    void MouseMove(Qt::MouseButtons buttons, QPoint position);
    void MouseUp(Qt::MouseButton button, QPoint position);
    /// In place of the second MouseDown of a double click.
    void DblClick(Qt::MouseButton button, QPoint position);
    /// While the picture has the focus. A key that nobody accepts goes on to what holds the picture.
    void KeyDown(QKeyEvent* event);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    QPixmap picture_;
    FaceDrawing drawing_;
    QPixmap drawn_; ///< the drawing at the present size and resolution
    QColor back_;   ///< invalid: transparent
    KeyboardFocus focus_;
    std::unique_ptr<ValueAccess> value_;
};
