// SPDX-License-Identifier: MIT
#include "platform/linux/ProcessReader.h"

#include <QThread>

#include <atomic>
#include <utility>

namespace clavo
{

namespace
{

struct Reading {
    std::vector<Process> processes;
    std::atomic<bool> isDone = false; // Hands the processes over, where a check can see it.
};

} // namespace

ProcessReader::ProcessReader(Receiver receiver) : m_receiver(std::move(receiver)) {}

ProcessReader::~ProcessReader()
{
    if (m_thread)
        m_thread->wait();
}

void ProcessReader::read()
{
    m_isAskedAgain = m_thread != nullptr;
    if (m_isAskedAgain)
        return;
    const auto reading = std::make_shared<Reading>();
    m_thread.reset(QThread::create([reading] {
        reading->processes = runningProcesses();
        reading->isDone = true;
    }));
    // The thread object lives on the main thread, and what it tells is told there.
    QObject::connect(m_thread.get(), &QThread::finished, m_thread.get(), [this, reading] {
        if (reading->isDone)
            take(reading->processes);
    });
    m_thread->start(QThread::LowPriority);
}

void ProcessReader::take(const std::vector<Process>& processes)
{
    m_thread->wait();
    m_thread.release()->deleteLater(); // It is the one that calls.
    if (std::exchange(m_isAskedAgain, false))
        read();
    m_receiver(processes);
}

} // namespace clavo
