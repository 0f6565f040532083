#include "controls/hyperlink_label.h"

UserControl2::UserControl2(QWidget* parent) : QWidget(parent) {}

void UserControl2::SetAutoRedraw(bool value) {
    AutoRedraw_ = value;
    update();
}

void UserControl2::SetMousePointer(int value) {
    MousePointer_ = value;
    update();
}

void UserControl2::SetBackColor(const QColor& value) {
    BackColor_ = value;
    update();
}

void UserControl2::ReadProperties(const QVariantMap& bag) {
    for (auto it = bag.begin(); it != bag.end(); ++it) {
        setProperty(it.key().toLatin1().constData(), it.value());
    }
}
