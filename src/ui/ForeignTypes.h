// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/LanguageSetting.h"
#include "app/Permission.h"
#include "stats/StatsStore.h"

#include <QtQml/qqml.h>

namespace clavo
{

// The types of lower layers as QML sees them. QML code cannot create objects of these types.

struct AppStateType {
    Q_GADGET
    QML_FOREIGN(clavo::AppState)
    QML_NAMED_ELEMENT(AppState)
    QML_UNCREATABLE("The program has one.")
};

struct PermissionType {
    Q_GADGET
    QML_FOREIGN(clavo::Permission)
    QML_NAMED_ELEMENT(Permission)
    QML_UNCREATABLE("The application state has it.")
};

struct LanguageSettingType {
    Q_GADGET
    QML_FOREIGN(clavo::LanguageSetting)
    QML_NAMED_ELEMENT(LanguageSetting)
    QML_UNCREATABLE("The program has one.")
};

struct StatsStoreType {
    Q_GADGET
    QML_FOREIGN(clavo::StatsStore)
    QML_NAMED_ELEMENT(StatsStore)
    QML_UNCREATABLE("The application state has it.")
};

struct StatsDayType {
    Q_GADGET
    QML_FOREIGN(clavo::StatsDay)
    QML_VALUE_TYPE(statsDay)
};

} // namespace clavo
