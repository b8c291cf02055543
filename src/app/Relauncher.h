// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace clavo
{

/// Starts the application anew. Thread: main.
class Relauncher
{
public:
    virtual ~Relauncher() = default;

    /// Opens a new instance of the application that takes the place of this one. Calls back once,
    /// within the call or later, whether or not an instance was opened.
    virtual void openNewInstance(std::function<void()> completed) = 0;
};

/// Opens a new instance and then, whatever came of it, ends this one from the main loop.
void relaunch(Relauncher& relauncher);

} // namespace clavo
