// The tests' own main: a QApplication must stand before the first window.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS(); // needs no display
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
