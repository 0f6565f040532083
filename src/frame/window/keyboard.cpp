#include "frame/window/keyboard.h"

#include "frame/record/samples.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <algorithm>
#include <iterator>
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

bool IsOurs(QKeyCombination keys) {
    const int channel = keys.toCombined() - Qt::Key_0;
    return (channel >= 1 && channel <= kScopeChannels) ||
           std::any_of(std::begin(kKeys), std::end(kKeys),
                       [keys](const Key& key) { return key.keys == keys; });
}

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
    window.installEventFilter(this);
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
    if (event->type() == QEvent::KeyRelease) {
        const auto& release = static_cast<const QKeyEvent&>(*event);
        if (!release.isAutoRepeat()) {
            repeat_.Released(release);
        }
    } else if (event->type() == QEvent::ShortcutOverride) {
        const auto& press = static_cast<const QKeyEvent&>(*event);
        const auto* edit = qobject_cast<QLineEdit*>(watched);
        // A text that is being typed keeps its letters by itself, but not all of the others.
        const bool typed = edit != nullptr && !edit->isReadOnly();
        const bool repeated = !press.isAutoRepeat() && repeat_.IsRepeat(press);
        if (repeated || (typed && IsOurs(press.keyCombination()))) {
            event->accept();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
