#include "widgets/theme.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    tarn::apply_theme(app, tarn::Theme::Light);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
