// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"

#include <memory>

namespace clavo
{

/// The owner of the application's name on the session's bus. Other programs can also request the
/// panel, as they can any application's window. A bus that was lost and started again gets the name
/// claimed anew. A locked file in the user's folder for run-time files shows processes without a
/// bus that there is an instance.
[[nodiscard]] std::unique_ptr<Instance> makeDBusInstance();

} // namespace clavo
