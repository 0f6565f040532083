#pragma once

#include "frame/record/channels.h"

#include <QString>
#include <array>

/// The texts at the time cursors. A cursor stands still for most plots, so a text is kept until its figures
/// change and a plot builds none.
class CursorReadouts {
  public:
    /// Stands between the names of two cursors; the canvas draws an arrow for it.
    static constexpr char16_t kArrow = 26;

    /// "t1@ 1.000us", and with a next cursor the way from this one to that, which may be negative.
    const QString& Text(int cursor, double position);
    const QString& Text(int cursor, double position, int next, double nextPosition);

  private:
    struct Kept {
        QString text;
        double position = 0;
        double nextPosition = 0;
        bool single = false;
    };
    std::array<Kept, kCursors> kept_;
};
