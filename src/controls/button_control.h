#pragma once

#include "controls/colour.h"

#include <QFont>
#include <QString>
#include <QVariant>
#include <QWidget>

/// The round, lit push button.
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

    void SetButtonVisible(bool value);
    void SetButtonFillColor(const QColor& value);
    void SetButtonBackColor(const QColor& value);
    void SetButtonForeColor(const QColor& value);
    void SetButtonDepth(int value);
    void SetButtonCaptionNudgeX(int value);
    void SetButtonCaptionNudgeY(int value);
    void SetButtonCaption(const QString& value);
    void SetButtonSunk(bool value);
    void SetButtonFont(const QFont& value);

    void Refresh();
    void ReadProperties(const QVariantMap& bag);

  signals:
    void Click();
    void Init();

  private:
    bool ButtonVisible_ = true;
    QColor ButtonFillColor_ = ToQColor(kButtonFace);
    QColor ButtonBackColor_ = ToQColor(kButtonFace);
    QColor ButtonForeColor_ = ToQColor(kButtonFace);
    int ButtonDepth_ = 2;
    int ButtonCaptionNudgeX_ = 0;
    int ButtonCaptionNudgeY_ = 0;
    QString ButtonCaption_;
    bool ButtonSunk_ = true;
    QFont ButtonFont_;
};
