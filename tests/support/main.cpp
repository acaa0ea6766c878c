#include "Program.h"

#include <gtest/gtest.h>

#include <QApplication>

#include <clocale>
#include <cstdlib>

int main(int argc, char *argv[])
{
    // Windows without a screen, texts without a language.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    ::setenv("LC_ALL", "C.UTF-8", 1);
    QLocale::setDefault(QLocale::c());
    QApplication application(argc, argv);
    vorn::InitResources();
    QApplication::setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    return RUN_ALL_TESTS();
}
