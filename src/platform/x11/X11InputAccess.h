// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"

#include <memory>
#include <string>

namespace clavo
{

/// The permission in an X11 session, whose server reports all input to every client: granted if the
/// display can be reached and has XInput 2.1; the session's own display if it is empty. A server
/// that starts on this machine is noticed.
[[nodiscard]] std::unique_ptr<InputAccess> makeX11InputAccess(std::string display = {});

} // namespace clavo
