#include "export/save_dialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QStandardPaths>

namespace {

QString FirstFolder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

} // namespace

std::optional<QString> AskForDataFile(QWidget* owner, const QString& folder) {
    QFileDialog dialog(owner, QStringLiteral("Select the file to save to (channels saved to seprate files)"),
                       folder.isEmpty() ? FirstFolder() : folder);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setNameFilters({QStringLiteral("Excel Text Files (*.txt)"), QStringLiteral("All Files (*.*)")});
    dialog.selectFile(QStringLiteral("CorvantineData"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return dialog.selectedFiles().constFirst();
}

void ShowSaveFailure(QWidget* owner, const QString& text) {
    QMessageBox(QMessageBox::Warning, QApplication::applicationName(), text, QMessageBox::Ok, owner).exec();
}
