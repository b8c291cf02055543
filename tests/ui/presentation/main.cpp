// SPDX-License-Identifier: MIT
#include "presentation/Screenshots.h"

#include <QGuiApplication>
#include <QLocale>

#include <gmock/gmock.h>

int main(int argc, char* argv[])
{
    testing::InitGoogleMock(&argc, argv);
    clavo::Screenshots::prepare();
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QLocale::setDefault(QLocale("en_US"));
    clavo::Screenshots::applyStyle();
    return RUN_ALL_TESTS();
}
