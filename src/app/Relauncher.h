// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace clavo
{

/// Starts the application again. Thread: main.
class Relauncher
{
public:
    virtual ~Relauncher() = default;

    /// Opens a new instance of the application, which replaces this one. Calls back once, within
    /// the call or later, whether or not an instance was opened.
    virtual void openNewInstance(std::function<void()> completed) = 0;
};

} // namespace clavo
