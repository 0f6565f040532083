#include "export/save_dialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTreeView>
#include <utility>

namespace {

QString FirstFolder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

/// Gives the toolkit's list of files the width that its texts need; the desktop's own dialog has none.
void SpreadColumns(const QFileDialog& dialog) {
    if (const auto* list = dialog.findChild<QTreeView*>()) {
        list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
}

/// In front of the whole program, and gone for good when it closes.
void Open(QDialog& dialog) {
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.show();
}

} // namespace

void AskForDataFile(QWidget* owner, const QString& folder,
                    std::function<void(std::optional<QString>)> answer) {
    auto* dialog =
        new QFileDialog(owner, QStringLiteral("Select the file to save to (channels saved to seprate files)"),
                        folder.isEmpty() ? FirstFolder() : folder);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->setNameFilters({QStringLiteral("Excel Text Files (*.txt)"), QStringLiteral("All Files (*.*)")});
    dialog->selectFile(QStringLiteral("CorvantineData"));
    SpreadColumns(*dialog);
    QObject::connect(
        dialog, &QFileDialog::finished, dialog, [dialog, answer = std::move(answer)](int result) {
            const QStringList files = dialog->selectedFiles();
            answer(result == QDialog::Accepted && !files.isEmpty() ? std::optional(files.constFirst())
                                                                   : std::nullopt);
        });
    Open(*dialog);
}

void ShowSaveFailure(QWidget* owner, const QString& text) {
    Open(*new QMessageBox(QMessageBox::Warning, QApplication::applicationName(), text, QMessageBox::Ok,
                          owner));
}
