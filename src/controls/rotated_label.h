#pragma once

#include <QWidget>

/// A text drawn at an angle, for captions that run up the side of a control.
class RotatedLabel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(int angle READ angle WRITE setAngle)
  public:
    explicit RotatedLabel(QWidget* parent = nullptr);

    QString text() const { return text_; }
    void setText(const QString& text);
    /// Degrees anticlockwise; 90 reads from bottom to top.
    int angle() const { return angle_; }
    void setAngle(int degrees);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
    int angle_ = 90;
};
