// SPDX-License-Identifier: MIT
#include "ui/QmlModules.h"

#include <utility>

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
    static bool isDone = false;
    if (std::exchange(isDone, true))
        return; // What is registered again is kept twice.
    qml_register_types_Clavo();
    qml_register_types_Clavo_Controls();
}

} // namespace clavo
