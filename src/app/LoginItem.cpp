// SPDX-License-Identifier: MIT
#include "app/LoginItem.h"

#include "log/Log.h"

namespace clavo
{

void setLaunchAtLogin(LoginItem& item, bool launchAtLogin)
{
    if (launchAtLogin == (item.status() == LoginItem::Status::enabled))
        return;
    const auto error = launchAtLogin ? item.registerItem() : item.unregisterItem();
    if (error)
        log::error("Clavo: lancement au démarrage impossible: {}", *error);
}

} // namespace clavo
