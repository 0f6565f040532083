#include <QApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Nothing that a test saves may touch the settings of whoever runs it.
    QStandardPaths::setTestModeEnabled(true);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
