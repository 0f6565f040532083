#pragma once

#include <QFont>
#include <QRect>
#include <vector>

class QLabel;

/// A label that shows its whole text whatever its length: it takes a narrower and then a smaller font, and in
/// the end more lines. It keeps what it took until Begin, so that a figure that changes its digits changes no
/// letters.
class FittedLabel {
  public:
    enum class Grow { Down, Up };
    /// A place that the text may take, with the fonts that are tried there in order.
    struct Room {
        QRect line;
        std::vector<QFont> fonts;
    };

    FittedLabel(QLabel& label, Grow grow) : label_(label), grow_(grow) {}

    /// Rooms in order of preference; in the last one, and its last font, lines are broken if need be.
    void Begin(std::vector<Room> rooms);
    /// True if the text went into another room or font than before.
    bool Show(const QString& text);
    /// Which of the rooms the text is in.
    std::size_t InRoom() const { return room_; }

  private:
    bool Fits(const QString& text) const;
    void Place();

    QLabel& label_;
    Grow grow_;
    std::vector<Room> rooms_;
    std::size_t room_ = 0;
    std::size_t font_ = 0;
    bool fresh_ = false;
};
