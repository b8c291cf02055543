// SPDX-License-Identifier: MIT
#include "ui/fakes/TestModules.h"

#include "ui/QmlModules.h"

void qml_register_types_Clavo_Test(); // Generated.

namespace clavo
{

void registerTestModules()
{
    registerQmlModules();
    qml_register_types_Clavo_Test();
}

} // namespace clavo
