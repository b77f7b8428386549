#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv) {
    // Also while the build asks for the names of the tests.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
