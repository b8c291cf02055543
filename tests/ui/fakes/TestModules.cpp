// SPDX-License-Identifier: MIT
#include "ui/fakes/TestModules.h"

#include "ui/QmlWindow.h"

// NOLINTNEXTLINE(readability-identifier-naming): the generator gives the name.
void qml_register_types_Clavo_Test();

namespace clavo
{

void registerTestModules()
{
    registerQmlModules();
    qml_register_types_Clavo_Test();
}

} // namespace clavo
