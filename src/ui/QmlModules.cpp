// SPDX-License-Identifier: MIT
#include "ui/QmlModules.h"

// Of the code that is generated for the modules. Nothing else refers to it, so the linker would
// leave it out.
// NOLINTBEGIN(readability-identifier-naming): the generator gives the names.
void qml_register_types_Clavo();
void qml_register_types_Clavo_Controls();
// NOLINTEND(readability-identifier-naming)

namespace clavo
{

void registerQmlModules()
{
    qml_register_types_Clavo();
    qml_register_types_Clavo_Controls();
}

} // namespace clavo
