// Shows every control of the program as the forms have it:
//   corvantine_gallery                a window with a page a control
//   corvantine_gallery --shot FOLDER  pictures of all pages at scale 1 and 2
#include "gallery_pages.h"

#include "controls/accessibility.h"
#include "controls/face_style.h"
#include "controls/symbol_font.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QScrollArea>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>
#include <cstdio>

namespace {

constexpr int kSettle = 250; // the controls draw behind a timer

int Shoot(const QDir& folder) {
    if (!folder.mkpath(QStringLiteral("."))) {
        return 1;
    }
    for (const GalleryPage& page : GalleryPages()) {
        QWidget* wall = BuildPage(
            page, [](const QString&) {}, nullptr);
        wall->show();
        QTest::qWait(kSettle);
        const QString file =
            folder.filePath(QStringLiteral("%1@%2x.png").arg(page.name).arg(wall->devicePixelRatioF()));
        if (!wall->grab().save(file)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            return 1;
        }
        std::printf("%s\n", qPrintable(file));
        delete wall;
    }
    return 0;
}

/// Runs this program once a scale: the scale of a process is fixed when it starts.
int ShootAtEveryScale(const QString& folder) {
    for (const char* scale : {"1", "2"}) {
        QProcess shooter;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(scale));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        shooter.setProcessEnvironment(environment);
        shooter.setProcessChannelMode(QProcess::ForwardedChannels);
        shooter.start(QApplication::applicationFilePath(), {QStringLiteral("--shot-here"), folder});
        if (!shooter.waitForFinished(60000) || shooter.exitCode() != 0) {
            return 1;
        }
    }
    return 0;
}

int Open() {
    QWidget window;
    window.setWindowTitle(QStringLiteral("Controls"));
    auto* layout = new QVBoxLayout(&window);
    auto* tabs = new QTabWidget;
    auto* events = new QLabel(QStringLiteral("-"));
    layout->addWidget(tabs);
    layout->addWidget(events);
    for (const GalleryPage& page : GalleryPages()) {
        auto* scroll = new QScrollArea;
        scroll->setWidget(BuildPage(
            page, [events](const QString& event) { events->setText(event); }, scroll));
        tabs->addTab(scroll, page.name);
    }
    window.resize(1060, 800);
    window.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    LoadSymbolFont();
    InstallAccessibility();
    ApplyFaceStyle(application);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--shot")) {
        return ShootAtEveryScale(arguments[2]);
    }
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--shot-here")) {
        return Shoot(QDir(arguments[2]));
    }
    return Open();
}
