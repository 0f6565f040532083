#include "frame/window/keyboard.h"

#include "frame/record/samples.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <utility>

namespace {

struct Key {
    QKeyCombination keys;
    std::function<void()> Keyboard::Calls::*call;
};
const Key kKeys[] = {{Qt::Key_R, &Keyboard::Calls::RunButton_Click},
                     {Qt::Key_S, &Keyboard::Calls::OnceButton_Click},
                     {Qt::Key_T, &Keyboard::Calls::TrigModeButton_Click},
                     {Qt::Key_N, &Keyboard::Calls::NormaliseButton_Click},
                     {Qt::Key_D, &Keyboard::Calls::SampleDotsButton_Click},
                     {Qt::Key_L, &Keyboard::Calls::FullScreenButton_Click},
                     {Qt::CTRL | Qt::Key_S, &Keyboard::Calls::SaveDataButton_Click},
                     {Qt::CTRL | Qt::Key_C, &Keyboard::Calls::Picture},
                     {Qt::Key_F1, &Keyboard::Calls::UsersGuideButton_Click},
                     {Qt::CTRL | Qt::Key_Q, &Keyboard::Calls::Close},
                     {Qt::Key_Escape, &Keyboard::Calls::ClosePanel}};

} // namespace

Keyboard::Keyboard(std::initializer_list<QWidget*> windows, Calls calls) : calls_(std::move(calls)) {
    for (QWidget* window : windows) {
        Listen(*window);
    }
}

void Keyboard::Listen(QWidget& window) {
    const auto on = [&](QKeyCombination keys, auto call) {
        auto* shortcut = new QShortcut(QKeySequence(keys), &window);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, [this, call] {
            if (calls_.Ready()) {
                call();
            }
        });
    };
    for (const Key& key : kKeys) {
        on(key.keys, [this, call = key.call] { (calls_.*call)(); });
    }
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        on(static_cast<Qt::Key>(Qt::Key_0 + channel),
           [this, channel] { calls_.ChannelOnButton_Click(channel); });
    }
    for (QLineEdit* edit : window.findChildren<QLineEdit*>()) {
        edit->installEventFilter(this);
    }
}

bool Keyboard::eventFilter(QObject* watched, QEvent* event) {
    // A text that is being typed keeps its letters by itself, but not the key that gives it up.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        const auto* edit = qobject_cast<QLineEdit*>(watched);
        if (edit != nullptr && !edit->isReadOnly()) {
            event->accept();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
