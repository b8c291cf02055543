// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"
#include "platform/linux/InputSource.h"

#include <memory>

namespace clavo
{

/// All that tells in this session that input is secret.
[[nodiscard]] std::unique_ptr<SecureInput> makeSecureInput(const SessionEnvironment& session);

} // namespace clavo
