#include "acquisition/trigger_status.h"

#include "controls/accessibility.h"

#include <algorithm>

TriggerStatus::TriggerStatus(QLabel* label) : label_(label) {
    const std::array<QString, 5> words{QString(), QStringLiteral("trigger ?"), QStringLiteral("trigger !"),
                                       QStringLiteral("auto?"), QStringLiteral("acquiring")};
    for (std::size_t word = 0; word < words.size(); ++word) {
        for (int dots = 0; dots < kDots; ++dots) {
            texts_[word][static_cast<std::size_t>(dots)] = words[word] + QString(dots, QLatin1Char('.'));
        }
    }
    // When its text changes, a label of fixed size asks no layout for room, and one with a name of its own
    // does not tell assistive technology at every dot that it is called something else now.
    label_->setFixedSize(label_->size());
    MakeStatus(*label_, QStringLiteral("Trigger status"));
}

void TriggerStatus::Show(Text text) {
    const bool another = text_ != text;
    text_ = text;
    dots_ = 0;
    Put();
    if (another) {
        AnnounceStatus(*label_);
    }
}

void TriggerStatus::AddDot() {
    dots_ = std::min(dots_ + 1, kDots - 1);
    ++counted_;
    if (counted_ >= kDots) {
        counted_ = 0;
        dots_ = 0;
    }
    Put();
}

void TriggerStatus::Put() {
    const QString& wanted = texts_[static_cast<std::size_t>(text_)][static_cast<std::size_t>(dots_)];
    if (label_->text() != wanted) {
        label_->setText(wanted);
    }
}
