// Tests of the desktop share one application; without a screen it draws off screen.

#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QLocale numbers;
    numbers.setNumberOptions(QLocale::OmitGroupSeparator);  // as Appearance has it
    QLocale::setDefault(numbers);
    return RUN_ALL_TESTS();
}
