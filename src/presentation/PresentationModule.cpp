// SPDX-License-Identifier: MIT
#include "presentation/PresentationModule.h"

#include "ui/QmlWindow.h"

// NOLINTNEXTLINE(readability-identifier-naming): the generator gives the name.
void qml_register_types_Clavo_Presentation();

namespace clavo
{

void registerPresentationModule()
{
    registerQmlModules();
    qml_register_types_Clavo_Presentation();
}

} // namespace clavo
