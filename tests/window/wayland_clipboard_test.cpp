#include "export/print.h"

#include "controls/button_control.h"
#include "controls/face_style.h"
#include "controls/form.h"
#include "controls/symbol_font.h"
#include "display/large_time_design.h"
#include "display/plot_canvas.h"

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

namespace {

constexpr int kPatience = 30000; ///< ms for anything that has to come true

/// What another program gets to see of the clipboard, while this one serves it.
QImage Pasted() {
    QProcess paste;
    paste.start(QStringLiteral("wl-paste"), {QStringLiteral("--type"), QStringLiteral("image/png")});
    if (!QTest::qWaitFor([&] { return paste.state() == QProcess::NotRunning; }, kPatience)) {
        paste.kill();
    }
    return QImage::fromData(paste.readAllStandardOutput(), "PNG");
}

} // namespace

TEST(WaylandClipboard, AnotherProgramGetsThePictureOfTheWindow) {
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("wayland"));
    LoadSymbolFont();
    ApplyFaceStyle(*qApp);
    Form form(LargeTimeDesign(), nullptr, kPlotCanvas);
    ClipboardShot shot(form, {.SetDefaultLayering = {},
                              .RefreshAppInfo = [] {},
                              .doEvents = [] { QApplication::processEvents(); }});
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form, kPatience));
    ASSERT_TRUE(QTest::qWaitFor([] { return QGuiApplication::focusWindow() != nullptr; }, kPatience))
        << "a program without the focus has no clipboard";
    emit form.control<ButtonControl1>("ClipboardButton")->Click();
    QImage pasted;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            pasted = Pasted();
            return !pasted.isNull();
        },
        kPatience));
    EXPECT_EQ(pasted.convertToFormat(QImage::Format_RGB32), WindowPicture(form));
}
