#pragma once

#include "controls/design.h"
#include "controls/picture.h"

#include "frame/record/channels.h"

#include <QTimer>
#include <QWidget>
#include <functional>

/// A form: a plain surface that holds the controls and timers of its table under their names.
/// It has no behaviour; the parts of the rooms give it that.
class Form : public QWidget {
    Q_OBJECT
  public:
    /// Makes the widget of a Canvas row; the display room hands it in.
    using CanvasMaker = std::function<QWidget*(QWidget* parent)>;

    explicit Form(const FormDesign& design, QWidget* parent = nullptr, const CanvasMaker& makeCanvas = {});

    /// The control of that name, "VoltsKnob" or element 1 of "Coupling". A name that the table does not hold
    /// is a mistake of the program and ends it.
    template <class T> T* control(const char* name, int index = -1) const {
        T* found = findChild<T*>(ControlName(name, index));
        if (found == nullptr) {
            missing(ControlName(name, index));
        }
        return found;
    }
    QTimer* timer(const char* name) const { return control<QTimer>(name); }

    /// The form's text of a channel tab: its channel number.
    QString Tag;

  signals:
    void Shown();
    void Resized();
    void Pressed(Qt::MouseButton button, QPoint position);

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[noreturn]] void missing(const QString& name) const;

    FaceDrawing ground_;
    QPixmap drawnGround_; ///< at the present size and resolution
};

/// The panels of the instrument channels; a channel without one has none.
using ChannelForms = PerScope<const Form*>;
