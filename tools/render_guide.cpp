// Renders docs/guide/guide.html, with the pictures beside it, to the guide that lies beside the program.
// Usage: render_guide guide.html Corvantineug.pdf

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QTextDocument>
#include <QUrl>
#include <cstdio>

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    QFile source(QString::fromLocal8Bit(argc == 3 ? argv[1] : ""));
    if (!source.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "usage: render_guide guide.html Corvantineug.pdf\n");
        return 2;
    }
    QTextDocument document;
    document.setBaseUrl(QUrl::fromLocalFile(QFileInfo(source).absolutePath() + '/'));
    document.setHtml(QString::fromUtf8(source.readAll()));
    QPdfWriter writer(QString::fromLocal8Bit(argv[2]));
    writer.setTitle(QStringLiteral("Corvantine user's guide"));
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setResolution(96);
    document.setPageSize(QSizeF(writer.width(), writer.height()));
    document.print(&writer);
    return 0;
}
