#pragma once

#include <QKeyEvent>

/// Tells the repeats of a key that is held down from presses. An X server sends a repeat as a release and a
/// press of one time; where they come to the toolkit apart, it takes them for what they look like.
class KeyRepeat {
  public:
    /// Of a press or of what is asked before it.
    bool IsRepeat(const QKeyEvent& press) const {
        return press.isAutoRepeat() ||
               (press.timestamp() != 0 && press.timestamp() == time_ && press.key() == key_);
    }
    void Released(const QKeyEvent& release) {
        key_ = release.key();
        time_ = release.timestamp();
    }

  private:
    int key_ = 0;
    quint64 time_ = 0; ///< ms of the window system's clock; 0: nobody has told
};
