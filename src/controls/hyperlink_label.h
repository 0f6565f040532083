#pragma once

#include "controls/colour.h"

#include <QFont>
#include <QString>
#include <QVariant>
#include <QWidget>

/// The clickable picture that opens a link.
class UserControl2 : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool AutoRedraw READ AutoRedraw WRITE SetAutoRedraw)
    Q_PROPERTY(int MousePointer READ MousePointer WRITE SetMousePointer)
    Q_PROPERTY(QColor BackColor READ BackColor WRITE SetBackColor)
  public:
    explicit UserControl2(QWidget* parent = nullptr);

    bool AutoRedraw() const { return AutoRedraw_; }
    int MousePointer() const { return MousePointer_; }
    QColor BackColor() const { return BackColor_; }

    void SetAutoRedraw(bool value);
    void SetMousePointer(int value);
    void SetBackColor(const QColor& value);

    void ReadProperties(const QVariantMap& bag);

  signals:
    void Click();

  private:
    bool AutoRedraw_ = false;
    int MousePointer_ = 0;
    QColor BackColor_ = ToQColor(kButtonFace);
};
