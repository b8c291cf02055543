// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"

#include <QtQml/qqml.h>

namespace clavo
{

// The types of the lower layers as QML knows them. It is given their objects and makes none.

struct AppStateType {
    Q_GADGET
    QML_FOREIGN(clavo::AppState)
    QML_NAMED_ELEMENT(AppState)
    QML_UNCREATABLE("The program has one.")
};

} // namespace clavo
