#include "export/print.h"

#include "controls/button_control.h"
#include "controls/form.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPixmap>
#include <utility>

QImage WindowPicture(QWidget& form) {
    const double ratio = form.devicePixelRatioF();
    const QSize size = (QSizeF(form.size()) * ratio).toSize();
    if (size.isEmpty()) {
        return {};
    }
    QPixmap picture(size);
    picture.setDevicePixelRatio(ratio);
    picture.fill(form.palette().color(form.backgroundRole()));
    form.render(&picture);
    QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1); // whoever takes it counts its pixels
    return image;
}

void CaptureWindowToClipboard(QWidget& form) {
    const QImage picture = WindowPicture(form);
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!picture.isNull() && clipboard != nullptr) {
        clipboard->setImage(picture);
    }
}

ClipboardShot::ClipboardShot(Form& form, Calls calls) : form_(form), calls_(std::move(calls)) {
    connect(form_.control<ButtonControl1>("ClipboardButton"), &ButtonControl1::Click, this,
            &ClipboardShot::ClipboardButton_Click);
}

void ClipboardShot::ClipboardButton_Click() {
    const int press = ++presses_;
    if (calls_.SetDefaultLayering) {
        calls_.SetDefaultLayering();
    }
    calls_.RefreshAppInfo();
    calls_.doEvents();
    // A later press, or the end of the program, may have been among the events.
    if (press == presses_ && form_.isVisible()) {
        CaptureWindowToClipboard(form_);
    }
}
