#include <QApplication>
#include <QStandardPaths>
#include <cstdio>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Nothing that a test saves may touch the settings of whoever runs it.
    QStandardPaths::setTestModeEnabled(true);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    const int outcome = RUN_ALL_TESTS();
    // A filter that fits no case any more, or a part of none, would pass for ever.
    if (!GTEST_FLAG_GET(list_tests) && testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::fprintf(stderr, "No case was run.\n");
        return 1;
    }
    return outcome;
}
