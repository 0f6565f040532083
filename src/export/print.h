#pragma once

#include <QImage>
#include <QObject>
#include <functional>

class Form;
class QWidget;

/// A picture of the whole window as it shows, in the pixels of its screen. The program draws it itself: what
/// lies above the window is not in it, and a desktop that refuses screen shots does not matter.
QImage WindowPicture(QWidget& form);

/// Puts that picture on the clipboard in place of what is there. A clipboard that cannot be had stays as it
/// is, without a message.
void CaptureWindowToClipboard(QWidget& form);

/// The clipboard button of a window: stamps the window afresh and takes its picture.
class ClipboardShot : public QObject {
    Q_OBJECT
  public:
    struct Calls {
        std::function<void()> SetDefaultLayering; ///< may be empty
        std::function<void()> RefreshAppInfo;     ///< the window's stamp
        std::function<void()> doEvents;           ///< lets the labels draw themselves
    };

    /// form holds a ClipboardButton.
    ClipboardShot(Form& form, Calls calls);

    void ClipboardButton_Click();

  private:
    Form& form_;
    Calls calls_;
    int presses_ = 0;
};
