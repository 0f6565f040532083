#include "controls/accessibility.h"
#include "controls/face_style.h"
#include "controls/symbol_font.h"
#include "driver/driver.h"
#include "driver/driver_choice.h"
#include "frame/instrument/closing.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/end_signals.h"
#include "frame/session/exit_keeper.h"
#include "frame/session/session_end.h"
#include "frame/session/start_up.h"

#include <QApplication>
#include <QMessageBox>
#include <QThread>
#include <cstdio>

namespace {

void ShowBox(const QString& text) {
    QMessageBox box(QMessageBox::NoIcon, QApplication::applicationName(),
                    QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")), QMessageBox::Ok,
                    QApplication::activeWindow()); // stays in front of the window that it speaks of
    box.setTextFormat(Qt::PlainText);              // a name that a module gives may look like markup
    box.exec();
}

Environment RealEnvironment() {
    Environment environment;
    environment.applicationFolder = QApplication::applicationDirPath();
    environment.settingsFolder = SettingsStore::DefaultFolder();
    environment.commandLine = QApplication::arguments().mid(1).join(QLatin1Char(' '));
    environment.show = ShowBox;
    environment.sleep = [](int milliseconds) { QThread::msleep(static_cast<unsigned long>(milliseconds)); };
    environment.yield = [] { QApplication::processEvents(); };
    return environment;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    EndSignals endSignals;
    QObject::connect(&endSignals, &EndSignals::Came, &DismissBoxes);
    QApplication::setApplicationName(QStringLiteral("Corvantine"));
    QApplication::setDesktopFileName(QStringLiteral("corvantine")); // whose icon and actions a desktop shows
    QApplication::setQuitOnLastWindowClosed(false);
    LoadSymbolFont();
    InstallAccessibility();
    ApplyFaceStyle(application);

    Environment environment = RealEnvironment();
    DriverChoice choice = ChooseDriver(NamedDriver(), environment.applicationFolder);
    if (!choice.failure.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(choice.failure));
        environment.show(choice.failure);
    }
    Driver driver(std::move(choice.backend));
    Record record;
    Instrument instrument(record, driver, std::move(environment));
    QObject::connect(&endSignals, &EndSignals::Came, [&instrument] { ShutDown(instrument); });
    SaveWithTheSession(instrument);
    const ExitKeeper keeper([&instrument] { instrument.KeepSettings(); });
    if (endSignals.HaveCome()) {
        return 0;
    }
    StartUp(instrument);
    if (!instrument.closing.Served()) {
        QApplication::exec();
        ShutDown(instrument); // whatever ended the loop; after a close it does nothing
    }
    return 0;
}
