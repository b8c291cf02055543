// SPDX-License-Identifier: MIT
#include "platform/linux/EvdevInputAccess.h"

#include "log/Log.h"

namespace clavo
{

bool EvdevInputAccess::isGranted() const
{
    return evdev::accessToKeyboards() == evdev::Access::granted;
}

void EvdevInputAccess::showSettings()
{
    if (const auto advice = adviceOn(evdev::accessToKeyboards()); !advice.empty())
        log::error("{}", advice);
}

std::string adviceOn(evdev::Access access)
{
    switch (access) {
    case evdev::Access::granted:
        return {};
    case evdev::Access::noKeyboard:
        return "aucun clavier dans /dev/input";
    case evdev::Access::notInThisLogin:
        return "accès aux claviers accordé au groupe input : il vaut à la prochaine ouverture de "
               "session";
    case evdev::Access::refused:
        break;
    }
    // The rule is read before 73-seat-late, which gives the devices it has marked to whoever sits
    // at them.
    return R"(accès aux claviers refusé. Ces deux commandes l'accordent à la session ouverte, et à tous ses programmes :
echo 'SUBSYSTEM=="input", KERNEL=="event*", TAG+="uaccess"' | sudo tee /etc/udev/rules.d/70-clavo-input.rules
sudo udevadm control --reload && sudo udevadm trigger --subsystem-match=input --action=change)";
}

} // namespace clavo
