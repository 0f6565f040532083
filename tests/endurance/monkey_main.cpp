// Random hands on the whole program. Usage: corvantine_monkey DRIVER SEED EVENTS, DRIVER being builtin,
// stack, sound or lying. Ends with 0 if nothing came of it; else a sanitizer has its say, and then the last
// events.

#include "controls/accessibility.h"
#include "controls/face_style.h"
#include "controls/symbol_font.h"
#include "driver/builtin_backend.h"
#include "driver/library_backend.h"
#include "endurance/last_words.h"
#include "endurance/lying_backend.h"
#include "endurance/monkey.h"
#include "endurance/sound_backend.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QUrl>
#include <cstdio>

namespace {

constexpr int kMostLies = 6;
constexpr const char* kSchemes[] = {"file", "http", "https", "mailto"};

std::unique_ptr<DriverBackend> MakeDriver(const QString& kind, std::mt19937& random) {
    const int modules = 1 + static_cast<int>(random() % kScopeChannels);
    if (kind == "builtin") {
        return std::make_unique<BuiltinBackend>();
    }
    if (kind == "stack") {
        return LibraryBackend::Load(CORVANTINE_SIMULATED_STACK).backend;
    }
    if (kind == "sound") {
        return std::make_unique<SoundBackend>(modules);
    }
    std::vector<Lie> lies;
    for (auto count = 1 + random() % kMostLies; count > 0; --count) {
        lies.push_back(AllLies()[random() % AllLies().size()]);
        LastWords::Say("lie %s", NameOf(lies.back()).c_str());
    }
    return std::make_unique<LyingBackend>(std::make_unique<SoundBackend>(modules), std::move(lies), random());
}

/// Takes what the program would hand to the desktop.
class NoDesktop : public QObject {
    Q_OBJECT
  public slots:
    void Take(const QUrl&) {}
};

void MakeHome(const QString& folder) {
    QDir(folder).mkpath("files/documents");
    QDir::setCurrent(folder);
    for (const char* name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(name, (folder + "/files").toUtf8());
    }
    WriteSkin(folder, "Blue", qRgb(40, 60, 90));
    WriteSkin(folder, "<img src=x> %s%n %1", qRgb(40, 90, 60));
    QFile broken(folder + "/skins/Corvantine_skin_Broken.bmp");
    if (broken.open(QIODevice::WriteOnly)) {
        broken.write("BM and nothing else");
    }
    QFile update(folder + "/update.url");
    if (update.open(QIODevice::WriteOnly)) {
        update.write("[InternetShortcut]\nURL=http://update.invalid/x");
    }
    QFile file(folder + "/files/afile");
    file.open(QIODevice::WriteOnly);
}

/// Two screens side by side, the second of twice the resolution, where the toolkit paints on none.
void MakeScreens(const QString& folder) {
    if (qgetenv("QT_QPA_PLATFORM") != "offscreen") {
        return;
    }
    QFile file(folder + "/screens.json");
    if (file.open(QIODevice::WriteOnly)) {
        file.write(R"({"screens": [
            {"name": "one", "x": 0, "y": 0, "width": 1280, "height": 800, "dpr": 1},
            {"name": "two", "x": 1280, "y": 0, "width": 1280, "height": 800, "dpr": 2}]})");
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file.fileName()));
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s builtin|stack|sound|lying SEED EVENTS\n", argv[0]);
        return 2;
    }
    const QTemporaryDir home;
    const QString folder = QDir(home.path()).canonicalPath() + "/a/deep/folder/to/stay/in";
    MakeHome(folder);
    MakeScreens(folder);
    QApplication application(argc, argv);
    QApplication::setApplicationName("Corvantine");
    QApplication::setQuitOnLastWindowClosed(false);
    NoDesktop desktop;
    for (const char* scheme : kSchemes) {
        QDesktopServices::setUrlHandler(scheme, &desktop, "Take");
    }
    if (QGuiApplication::screens().size() < 2 && QGuiApplication::platformName() == "offscreen") {
        std::fprintf(stderr, "there are not two screens\n");
        return 2;
    }
    LoadSymbolFont();
    InstallAccessibility();
    ApplyFaceStyle(application);

    const QString kind = argv[1];
    const auto seed = static_cast<std::uint32_t>(std::strtoul(argv[2], nullptr, 10));
    LastWords::Keep();
    LastWords::Say("driver %s, seed %u", argv[1], seed);
    QElapsedTimer clock;
    clock.start();
    Monkey monkey([kind](std::mt19937& random) { return MakeDriver(kind, random); }, folder, seed,
                  std::atoi(argv[3]));
    monkey.Run();
    LastWords::Rest();
    const SoundBackend::Open open = SoundBackend::NowOpen();
    std::printf(
        "driver %s, seed %u: %d events, %d starts, %lld controls, %d boxes, %d file dialogs, %d loops of the "
        "toolkit in %.0f s\n",
        argv[1], seed, monkey.Events(), monkey.Starts(), static_cast<long long>(monkey.Controls()),
        monkey.Boxes(), monkey.Dialogs(), monkey.Loops(), static_cast<double>(clock.elapsed()) / 1000);
    for (const char* scheme : kSchemes) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
    if (kind == "sound" && (open.libraries != 0 || open.modules != 0)) {
        std::printf("left open: %d libraries, %d modules\n", open.libraries, open.modules);
        return 1;
    }
    return 0;
}

#include "monkey_main.moc"
