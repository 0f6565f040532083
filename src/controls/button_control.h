#pragma once

#include "controls/colour.h"
#include "controls/deferred_repaint.h"
#include "controls/key_repeat.h"
#include "controls/keyboard_focus.h"

#include <QFont>
#include <QString>
#include <QVariant>
#include <QWidget>

/// The round, lit push button.
///
/// A press of any mouse button holds it down, a release on it raises Click; a pointer that leaves it while
/// held lets go for good. Space and Enter press it too.
class ButtonControl1 : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool ButtonVisible READ ButtonVisible WRITE SetButtonVisible)
    Q_PROPERTY(QColor ButtonFillColor READ ButtonFillColor WRITE SetButtonFillColor)
    Q_PROPERTY(QColor ButtonBackColor READ ButtonBackColor WRITE SetButtonBackColor)
    Q_PROPERTY(QColor ButtonForeColor READ ButtonForeColor WRITE SetButtonForeColor)
    Q_PROPERTY(int ButtonDepth READ ButtonDepth WRITE SetButtonDepth)
    Q_PROPERTY(int ButtonCaptionNudgeX READ ButtonCaptionNudgeX WRITE SetButtonCaptionNudgeX)
    Q_PROPERTY(int ButtonCaptionNudgeY READ ButtonCaptionNudgeY WRITE SetButtonCaptionNudgeY)
    Q_PROPERTY(QString ButtonCaption READ ButtonCaption WRITE SetButtonCaption)
    Q_PROPERTY(bool ButtonSunk READ ButtonSunk WRITE SetButtonSunk)
    Q_PROPERTY(QFont ButtonFont READ ButtonFont WRITE SetButtonFont)
  public:
    explicit ButtonControl1(QWidget* parent = nullptr);

    bool ButtonVisible() const { return ButtonVisible_; }
    QColor ButtonFillColor() const { return ButtonFillColor_; }
    QColor ButtonBackColor() const { return ButtonBackColor_; }
    QColor ButtonForeColor() const { return ButtonForeColor_; }
    int ButtonDepth() const { return ButtonDepth_; }
    int ButtonCaptionNudgeX() const { return ButtonCaptionNudgeX_; }
    int ButtonCaptionNudgeY() const { return ButtonCaptionNudgeY_; }
    QString ButtonCaption() const { return ButtonCaption_; }
    bool ButtonSunk() const { return ButtonSunk_; }
    QFont ButtonFont() const { return ButtonFont_; }

    /// A button that is not visible draws nothing and keeps its place: the mouse still reaches it.
    void SetButtonVisible(bool value);
    void SetButtonFillColor(const QColor& value);
    void SetButtonBackColor(const QColor& value);
    void SetButtonForeColor(const QColor& value);
    /// Depth and nudges are pixels, cut to 16 bits.
    void SetButtonDepth(int value);
    void SetButtonCaptionNudgeX(int value);
    void SetButtonCaptionNudgeY(int value);
    void SetButtonCaption(const QString& value);
    void SetButtonSunk(bool value);
    void SetButtonFont(const QFont& value);

    /// A paint request.
    void Refresh();
    /// Takes the design keys that the bag holds, the defaults for the rest. Raises nothing.
    void ReadProperties(const QVariantMap& bag);
    /// The design keys whose values differ from what is left out when written. "Visible" is left out when
    /// False, so that a hidden button comes back visible.
    QVariantMap WriteProperties() const;

    bool Pressed() const { return Pressed_; }

  signals:
    void Click();
    /// The control is shown for the first time.
    void Init();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void RequestPaint();
    void Press(bool byKey);
    void Release();
    void LetGo();
    void StoreVisible(bool value);

    /// The one table of the properties: each design key with its value and its default.
    template <class Self, class Visit> static void VisitKeys(Self& self, const Visit& visit);

    bool ButtonVisible_ = true;
    QColor ButtonFillColor_;
    QColor ButtonBackColor_;
    QColor ButtonForeColor_;
    int ButtonDepth_;
    int ButtonCaptionNudgeX_;
    int ButtonCaptionNudgeY_;
    QString ButtonCaption_;
    bool ButtonSunk_;
    QFont ButtonFont_;

    bool Pressed_ = false;
    bool pressedByKey_ = false;
    bool initialised_ = false;
    KeyboardFocus focus_;
    KeyRepeat repeat_;
    DeferredRepaint repaint_;
};
