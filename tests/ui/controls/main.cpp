// SPDX-License-Identifier: MIT
#include "ui/fakes/TestModules.h"

#include <QtQuickTest>

namespace
{

class Setup : public QObject
{
    Q_OBJECT
public slots:
    void applicationAvailable() { clavo::registerTestModules(); }
};

} // namespace

QUICK_TEST_MAIN_WITH_SETUP(clavo, Setup)

#include "main.moc"
