// The start of the tests that show widgets: an application without a screen.
#include <gtest/gtest.h>

#include <QApplication>

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    ::testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
