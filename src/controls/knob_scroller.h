#pragma once

#include <QAbstractSlider>

/// The small horizontal scroll bar of a knob, drawn within what the knob lets be seen of it. It leaves wheel
/// and keyboard to the knob.
class KnobScroller : public QAbstractSlider {
    Q_OBJECT
  public:
    explicit KnobScroller(QWidget* parent);

    /// In pixels from the left.
    struct Track {
        int left;  ///< behind the left arrow
        int right; ///< one past the track
        int thumbWidth;
        int travel() const { return right - left - thumbWidth; }
    };
    Track track() const;
    QRect thumb() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    int bodyHeight() const;

    int grabbed_ = 0; ///< where in the thumb the mouse holds it
};
