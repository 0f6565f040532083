#pragma once

#include <QPixmap>
#include <QWidget>

/// An image control: shows a picture stretched to its size, or one colour, and reports the mouse.
class Picture : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor BackColor READ BackColor WRITE SetBackColor)
  public:
    explicit Picture(QWidget* parent = nullptr);

    QColor BackColor() const { return back_; }
    void SetBackColor(const QColor& colour);
    void SetPicture(const QPixmap& picture);
    const QPixmap& Image() const { return picture_; }

  signals:
    void MouseDown(Qt::MouseButton button, QPoint position);
    void MouseMove(Qt::MouseButtons buttons, QPoint position);
    void MouseUp(Qt::MouseButton button, QPoint position);
    void DblClick();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    QPixmap picture_;
    QColor back_; ///< invalid: transparent
};
