#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <QtTest/qtestsystem.h>
#include <gtest/gtest.h>

TEST(Display, ShowsAndActivatesAWindowOnARealScreen) {
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    QWidget window;
    window.resize(200, 100);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, 30000));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window, 30000));
    // Only a window manager puts a frame around it.
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.frameGeometry().height() > window.height(); }, 30000));
}
