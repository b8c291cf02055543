// SPDX-License-Identifier: MIT
#include "desktop/user/SinkRecorder.h"

#include <array>
#include <csignal>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace clavo
{

// posix_spawn, because the thread sanitizer has no use for a process that forks while it has
// threads.
SinkRecorder::SinkRecorder(const std::string& sink)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) < 0)
        return;
    m_sound = ends[0];

    std::string device = "--device=" + sink + ".monitor";
    std::array<std::string, 6> words{"parec",        "--raw",        "--format=float32ne",
                                     "--rate=44100", "--channels=2", "--latency-msec=10"};
    std::array<char*, 8> arguments{words[0].data(), words[1].data(), words[2].data(),
                                   words[3].data(), words[4].data(), words[5].data(),
                                   device.data(),   nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    if (posix_spawnp(&m_process, "parec", &actions, nullptr, arguments.data(), environ) != 0)
        m_process = 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);

    m_notifier = std::make_unique<QSocketNotifier>(m_sound, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { take(); });
}

SinkRecorder::~SinkRecorder()
{
    m_notifier.reset();
    close(m_sound);
    if (m_process != 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
}

void SinkRecorder::take()
{
    auto* const bytes = reinterpret_cast<char*>(m_block.data());
    const auto more = read(m_sound, bytes + m_received, sizeof m_block - m_received);
    if (more <= 0) {
        m_notifier->setEnabled(false); // The listener has ended.
        return;
    }
    m_received += static_cast<std::size_t>(more);
    const auto whole = m_received / sizeof(Frame);
    for (const auto& frame : std::span(m_block).first(whole)) {
        m_recording.left.push_back(frame.left);
        m_recording.right.push_back(frame.right);
    }
    m_received -= whole * sizeof(Frame);
    std::memmove(bytes, bytes + whole * sizeof(Frame), m_received);
}

} // namespace clavo
