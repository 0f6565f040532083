#pragma once

#include "controls/key_repeat.h"

#include <QObject>
#include <functional>
#include <initializer_list>

class QWidget;

/// The keys that work from every large window of the instrument while no text is being typed. Each does what
/// a press of its button does; held down it does it once.
class Keyboard : public QObject {
    Q_OBJECT
  public:
    struct Calls {
        std::function<bool()> Ready; ///< false: the program starts or ends, and no key does anything
        std::function<void()> RunButton_Click;
        std::function<void()> OnceButton_Click;
        std::function<void()> TrigModeButton_Click;
        std::function<void(int channel)> ChannelOnButton_Click;
        std::function<void()> NormaliseButton_Click;
        std::function<void()> SampleDotsButton_Click;
        std::function<void()> FullScreenButton_Click;
        std::function<void()> SaveDataButton_Click;
        std::function<void()> Picture; ///< of the window in front, to the clipboard
        std::function<void()> UsersGuideButton_Click;
        std::function<void()> Close;
        std::function<void()> ClosePanel; ///< of those that are out the foremost
    };

    Keyboard(std::initializer_list<QWidget*> windows, Calls calls);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Listen(QWidget& window);

    Calls calls_;
    KeyRepeat repeat_;
};
