// One QApplication for the whole test process: widgets, menus and GL windows need it.
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Without a display Qt runs offscreen: widgets and menus work there; suites that
    // need real GL pixels run under Xvfb (see test.sh).
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
