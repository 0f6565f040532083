// Paints the instrument's icon into the files that a desktop wants: render_icons FOLDER leaves 16.png to
// 256.png there.

#include "skin/instrument_icon.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "Usage: render_icons FOLDER\n");
        return 2;
    }
    for (const QSize size : InstrumentIcon().availableSizes()) {
        const QString file = QDir(argv[1]).filePath(QString("%1.png").arg(size.width()));
        if (!InstrumentIconAt(size.width()).save(file)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
