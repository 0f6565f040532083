// Takes the pictures of the user's guide from the program itself, into a folder, with places.json beside
// them: what stands where in each picture, and facts of the program that the guide tells. scripts/guide.sh
// runs it on a screen of its own, once with fast signals and once with slow ones.
//
//   guide_pictures FOLDER fast|slow

#include "scenes.h"

#include "acquisition/timebase_table.h"
#include "controls/face_style.h"
#include "controls/symbol_font.h"
#include "driver/driver_choice.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"

#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QShortcut>
#include <QTemporaryDir>
#include <QThread>
#include <cstdio>

namespace {

Environment EnvironmentIn(const QString& settingsFolder) {
    Environment environment;
    environment.applicationFolder = QApplication::applicationDirPath();
    environment.settingsFolder = settingsFolder;
    environment.show = [](const QString& text) { std::fprintf(stderr, "%s\n", qPrintable(text)); };
    environment.sleep = [](int ms) { QThread::msleep(static_cast<unsigned long>(ms)); };
    environment.yield = [] { QApplication::processEvents(); };
    return environment;
}

QJsonArray TimebaseFacts() {
    QJsonArray rows;
    for (int i = 0; i < kTimebaseSettings; ++i) {
        const TimebaseSetting& setting = *FindTimebaseSetting(i);
        static const char* const kModes[] = {"RIS", "refresh", "roll"};
        rows.append(QJsonObject{{"label", setting.label},
                                {"mode", kModes[static_cast<int>(setting.mode)]},
                                {"period", SamplePeriodOf(setting)},
                                {"expansion", setting.displayExpansion}});
    }
    return rows;
}

QJsonArray Shortcuts(const QWidget& window) {
    QJsonArray keys;
    for (const QShortcut* shortcut : window.findChildren<QShortcut*>(Qt::FindDirectChildrenOnly)) {
        keys.append(shortcut->key().toString(QKeySequence::PortableText));
    }
    return keys;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Corvantine"));
    const QStringList arguments = QApplication::arguments();
    QDir folder(arguments.value(1));
    if (arguments.size() != 3 || !folder.mkpath(QStringLiteral("saved"))) {
        std::fprintf(stderr, "usage: guide_pictures FOLDER fast|slow\n");
        return 2;
    }
    const QString signal = arguments[2];
    LoadSymbolFont();
    ApplyFaceStyle(application);
    const QTemporaryDir settings;
    Environment environment = EnvironmentIn(settings.path());
    DriverChoice choice = ChooseDriver(NamedDriver(), environment.applicationFolder);
    if (!choice.failure.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(choice.failure));
        return 1;
    }
    Driver driver(std::move(choice.backend));
    Record record;
    Instrument instrument(record, driver, std::move(environment));
    StartUp(instrument);
    Camera camera(folder);
    if (signal == QLatin1String("slow")) {
        TakeSlowSignals(instrument, camera);
    } else {
        TakeFastSignals(instrument, camera, QDir(folder.filePath(QStringLiteral("saved"))));
    }
    const QJsonObject facts{{"pictures", camera.Pictures()},
                            {"timebase", TimebaseFacts()},
                            {"shortcuts", Shortcuts(*instrument.forms.surface)}};
    ShutDown(instrument);

    QFile file(folder.filePath(signal + QStringLiteral(".json")));
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(facts).toJson()) > 0 && file.flush();
    return written && camera.Failures() == 0 ? 0 : 1;
}
