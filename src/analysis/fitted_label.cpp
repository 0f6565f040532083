#include "analysis/fitted_label.h"

#include <QFontMetrics>
#include <QLabel>
#include <algorithm>
#include <utility>

namespace {
constexpr int kOverhang = 2; ///< pixels by which letters may reach beyond their advance
} // namespace

void FittedLabel::Begin(std::vector<Room> rooms) {
    rooms_ = std::move(rooms);
    room_ = 0;
    font_ = 0;
    fresh_ = true;
}

bool FittedLabel::Fits(const QString& text) const {
    const Room& room = rooms_[room_];
    return QFontMetrics(room.fonts[font_]).horizontalAdvance(text) + kOverhang <= room.line.width();
}

bool FittedLabel::Show(const QString& text) {
    if (rooms_.empty() || (!fresh_ && label_.text() == text)) {
        return false;
    }
    const auto room = room_;
    const auto font = font_;
    const auto last = [this] {
        return room_ + 1 == rooms_.size() && font_ + 1 == rooms_[room_].fonts.size();
    };
    while (!Fits(text) && !last()) {
        if (++font_ == rooms_[room_].fonts.size()) {
            ++room_;
            font_ = 0;
        }
    }
    const bool moved = fresh_ || room != room_ || font != font_;
    fresh_ = false;
    label_.setText(text);
    if (moved || last()) {
        Place();
    }
    return moved;
}

void FittedLabel::Place() {
    const Room& room = rooms_[room_];
    const QFont& font = room.fonts[font_];
    if (label_.font() != font) {
        label_.setFont(font);
    }
    const QRect text = QFontMetrics(font).boundingRect(QRect(0, 0, room.line.width(), 1 << 14),
                                                       Qt::TextWordWrap, label_.text());
    const bool broken = !Fits(label_.text());
    QRect place = room.line;
    if (broken) {
        const int height = std::max(place.height(), text.height());
        if (grow_ == Grow::Up) {
            place.setTop(place.bottom() + 1 - height);
        } else {
            place.setHeight(height);
        }
    }
    label_.setWordWrap(broken);
    label_.setAutoFillBackground(broken); // then it lies over the plot
    if (broken) {
        label_.raise();
    }
    if (label_.geometry() != place) {
        label_.setGeometry(place);
    }
}
