// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiSecureInput.h"

namespace clavo
{

std::unique_ptr<ObservableSecureInput> makeAtspiSecureInput(std::unique_ptr<Timer>,
                                                            atspi::FocusReceiver)
{
    return nullptr;
}

} // namespace clavo
