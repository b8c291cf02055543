// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/ProcessTree.h"

#include <functional>
#include <memory>
#include <vector>

class QThread;

namespace clavo
{

/// Reads which processes run, in the background, and tells it on the main thread. Thread: main,
/// which runs a Qt event loop.
class ProcessReader
{
public:
    using Receiver = std::function<void(const std::vector<Process>&)>;

    explicit ProcessReader(Receiver receiver);
    /// Takes some milliseconds while one reads.
    ~ProcessReader();
    ProcessReader(const ProcessReader&) = delete;
    ProcessReader& operator=(const ProcessReader&) = delete;

    /// Calls the receiver once with what runs from now on or later.
    void read();

private:
    void take(const std::vector<Process>& processes);

    Receiver m_receiver;
    std::unique_ptr<QThread> m_thread; // Reads; null while nobody does.
    bool m_isAskedAgain = false;       // Since it began.
};

} // namespace clavo
