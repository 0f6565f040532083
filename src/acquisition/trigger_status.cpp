#include "acquisition/trigger_status.h"

TriggerStatus::TriggerStatus(QLabel* label) : label_(label) {
    const std::array<QString, 5> words{QString(), QStringLiteral("trigger ?"), QStringLiteral("trigger !"),
                                       QStringLiteral("auto?"), QStringLiteral("acquiring")};
    for (std::size_t word = 0; word < words.size(); ++word) {
        for (int dots = 0; dots < kDots; ++dots) {
            texts_[word][static_cast<std::size_t>(dots)] = words[word] + QString(dots, QLatin1Char('.'));
        }
    }
    // A label whose size is fixed asks no layout for room when its text changes.
    label_->setFixedSize(label_->size());
}

void TriggerStatus::Show(Text text) {
    text_ = text;
    dots_ = 0;
    Put();
}

void TriggerStatus::AddDot() {
    ++dots_;
    ++Tag;
    if (Tag >= kDots) {
        Tag = 0;
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
