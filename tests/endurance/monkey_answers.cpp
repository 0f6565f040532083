#include "endurance/last_words.h"
#include "endurance/monkey.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QThread>
#include <QWindow>
#include <iterator>

// What comes up while the hands are at it, and how it is answered.

namespace {

constexpr int kBoxLife = 40; ///< deeds before a box that nobody answers is closed

/// Names to save to; all of them stay in the folder.
const char* const kNames[] = {"data",
                              "a b.c.d",
                              "%s%n%1",
                              "<b>x</b>",
                              "..",
                              ".",
                              "",
                              "no/such/folder/x",
                              "afile/x",
                              "-rf",
                              "\xc3\xa4\xe2\x82\xac",
                              "x\ny",
                              "CON",
                              "full"};

} // namespace

void Monkey::KeepInFolder() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QFileDialog*>(widget);
        if (dialog != nullptr && !dialog->directory().absolutePath().startsWith(folder_)) {
            dialog->setDirectory(folder_ + "/files");
        }
    }
}

void Monkey::AnswerFileDialog(QFileDialog& dialog) {
    const char* name = kNames[Below(std::size(kNames))];
    const bool accepts = Chance(60);
    LastWords::Say("%d: file dialog %s %s", events_, accepts ? "accepts" : "closes", name);
    ++events_;
    if (!accepts) {
        dialog.reject();
        return;
    }
    dialog.setDirectory(folder_ + "/files");
    if (auto* edit = dialog.findChild<QLineEdit*>()) {
        edit->setText(QString::fromUtf8(name));
    }
    QMetaObject::invokeMethod(&dialog, "accept");
}

// A box of the program: it runs its own loop until it is answered.
void Monkey::AnswerBox(const QString& text) {
    LastWords::Say("%d: box %s", events_, qPrintable(text.left(60).replace('\n', ' ')));
    ++boxes_;
    if (depth_ >= kDeepest) {
        return;
    }
    ++depth_;
    QMessageBox box(QMessageBox::NoIcon, "Corvantine", text, QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setModal(true);
    box.show();
    for (int deeds = 0; box.isVisible() && deeds < kBoxLife; ++deeds) {
        Act();
        QCoreApplication::processEvents();
    }
    box.close();
    --depth_;
}

// Where the program lets events run, something comes in.
void Monkey::Yield() {
    QCoreApplication::processEvents();
    if (Chance(10)) {
        BreakIn();
    }
}

void Monkey::BreakIn() {
    if (depth_ >= kDeepest || Ended()) {
        return;
    }
    ++depth_;
    for (int deeds = 1 + Below(3); deeds > 0 && !Ended(); --deeds) {
        Act();
    }
    --depth_;
}

// In a loop of the toolkit's own, which nobody else would end: a menu, or a question of the file dialog.
void Monkey::Rescue() {
    if (QThread::currentThread()->loopLevel() < 2) {
        return;
    }
    LastWords::Say("%d: in a loop of the toolkit", events_);
    ++loops_;
    QWidget* front = QApplication::activePopupWidget();
    front = front == nullptr ? QApplication::activeModalWidget() : front;
    if (front == nullptr || Chance(30)) {
        if (front != nullptr) {
            front->close();
        }
        return;
    }
    if (front->windowHandle() != nullptr && depth_ < kDeepest) {
        ++depth_;
        Hand(*front->windowHandle());
        KeepInFolder();
        --depth_;
    }
}
