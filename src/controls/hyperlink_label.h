#pragma once

#include "controls/colour.h"
#include "controls/key_repeat.h"
#include "controls/keyboard_focus.h"

#include <QPixmap>
#include <QVariant>
#include <QWidget>

class HostHyperLink;

/// The clickable surface that shows a picture and opens a link. It draws nothing of its own: its owner
/// answers Click and goes through HyperLink.
class UserControl2 : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool AutoRedraw READ AutoRedraw WRITE SetAutoRedraw)
    Q_PROPERTY(QPixmap MouseIcon READ MouseIcon WRITE SetMouseIcon)
    Q_PROPERTY(int MousePointer READ MousePointer WRITE SetMousePointer)
    Q_PROPERTY(QPixmap Picture READ Picture WRITE SetPicture)
    Q_PROPERTY(QColor BackColor READ BackColor WRITE SetBackColor)
    Q_PROPERTY(HostHyperLink* HyperLink READ HyperLink CONSTANT)
  public:
    explicit UserControl2(QWidget* parent = nullptr);

    bool AutoRedraw() const { return AutoRedraw_; }
    QPixmap MouseIcon() const { return MouseIcon_; }
    int MousePointer() const { return MousePointer_; }
    QPixmap Picture() const { return Picture_; }
    QColor BackColor() const { return BackColor_; }
    HostHyperLink* HyperLink() const { return HyperLink_; }

    void SetAutoRedraw(bool value);
    void SetMouseIcon(const QPixmap& value);
    /// 0: a hand, as links have; 1 to 15: the system's pointers from the arrow on; 99: MouseIcon.
    void SetMousePointer(int value);
    void SetPicture(const QPixmap& value);
    void SetBackColor(const QColor& value);

    /// Takes the design keys that the bag holds, the defaults for the rest. Raises nothing.
    void ReadProperties(const QVariantMap& bag);
    /// The design keys whose values differ from the defaults.
    QVariantMap WriteProperties() const;

  signals:
    void Click();
    /// A put has marked the property as changed, whatever it was before.
    void PropertyChanged(const QString& name);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void ShowPointer();
    void Mark(const char* name);

    bool AutoRedraw_ = false;
    QPixmap MouseIcon_;
    int MousePointer_ = 0;
    QPixmap Picture_;
    QColor BackColor_ = ToQColor(kButtonFace);
    HostHyperLink* HyperLink_;
    KeyboardFocus focus_;
    KeyRepeat repeat_;
    bool pressed_ = false; ///< the left button went down here, and not as the second of a double click
};
