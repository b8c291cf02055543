// SPDX-License-Identifier: MIT
#include "platform/inotify/FolderWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>
#include <vector>

namespace clavo
{

FolderWatch::FolderWatch(std::filesystem::path folder, Receiver changed)
    : m_folder(std::move(folder)), m_changed(std::move(changed))
{
}

std::error_code FolderWatch::start()
{
    stop();
    m_file.emplace(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (m_file->number() < 0 || !watch()) {
        const std::error_code error(errno, std::generic_category());
        stop();
        return error;
    }
    m_readable.emplace(m_file->number(), QSocketNotifier::Read);
    QObject::connect(&*m_readable, &QSocketNotifier::activated, [this] { readChanges(); });
    return {};
}

void FolderWatch::stop()
{
    m_readable.reset(); // Before its descriptor is closed.
    m_file.reset();
    m_folderWatch = -1;
    m_parentWatch = -1;
}

/// Watches the folder or, while it is missing, the one that contains it. False, with errno, on
/// failure.
bool FolderWatch::watch()
{
    const int file = m_file->number();
    const auto watchFolder = [&] {
        m_folderWatch =
            ::inotify_add_watch(file, m_folder.c_str(),
                                IN_CREATE | IN_ATTRIB | IN_MOVED_TO | IN_DELETE_SELF | IN_ONLYDIR);
        return m_folderWatch >= 0;
    };
    if (!watchFolder()) {
        if (errno != ENOENT && errno != ENOTDIR)
            return false;
        m_parentWatch = ::inotify_add_watch(file, m_folder.parent_path().c_str(),
                                            IN_CREATE | IN_MOVED_TO | IN_ONLYDIR);
        // The folder may have appeared in between.
        if (m_parentWatch < 0 || !watchFolder())
            return m_parentWatch >= 0;
    }
    if (m_parentWatch >= 0)
        ::inotify_rm_watch(file, std::exchange(m_parentWatch, -1));
    return true;
}

void FolderWatch::readChanges()
{
    alignas(inotify_event) std::array<char, 4096> buffer{};
    std::vector<std::string> names;
    bool isAnything = false;
    ssize_t count = 0;
    while ((count = ::read(m_file->number(), buffer.data(), buffer.size())) > 0) {
        for (const char* next = buffer.data(); next < buffer.data() + count;) {
            const auto& change = *reinterpret_cast<const inotify_event*>(next);
            next += sizeof(inotify_event) + change.len;
            const bool hasName = change.len > 0;
            if ((change.mask & IN_Q_OVERFLOW) != 0)
                isAnything = true;
            else if (change.wd == m_folderWatch && (change.mask & IN_IGNORED) != 0)
                m_folderWatch = -1; // The folder is gone.
            else if (change.wd == m_folderWatch && hasName)
                names.emplace_back(change.name);
        }
    }
    if (m_folderWatch < 0)
        isAnything = watch() && m_folderWatch >= 0;
    if (isAnything)
        m_changed({});
    else if (!names.empty())
        m_changed(names);
}

} // namespace clavo
