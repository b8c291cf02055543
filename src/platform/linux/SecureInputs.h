// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"
#include "platform/linux/Session.h"

#include <memory>

namespace clavo
{

/// Creates the session's secure-input detector.
[[nodiscard]] std::unique_ptr<SecureInput> makeSecureInput(const Session& session);

} // namespace clavo
