// SPDX-License-Identifier: MIT
#include "stats/TimeZone.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFileSystemWatcher>
#include <QString>

#include <string_view>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

constexpr int mostLinks = 40; // The kernel's limit.

/// The zone whose file in the system's database has this path; invalid if it has none.
QTimeZone zoneOfFile(const fs::path& file)
{
    constexpr std::string_view database = "/zoneinfo/";
    const auto& path = file.native();
    const auto start = path.find(database);
    return start == fs::path::string_type::npos
               ? QTimeZone()
               : QTimeZone(QByteArray::fromStdString(path.substr(start + database.size())));
}

/// The kernel reports a change of a folder to the main loop, so a key needs no system call to learn
/// the zone.
class SystemTimeZone final : public TimeZone
{
public:
    explicit SystemTimeZone(fs::path link) : TimeZone(QTimeZone()), m_link(std::move(link))
    {
        connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &SystemTimeZone::read);
        read();
    }

private:
    // The links are replaced, so their folders are watched. Each folder is watched before its link
    // is read: no change remains unnoticed.
    void read()
    {
        std::error_code error;
        auto file = m_link;
        for (int links = 0; links < mostLinks; ++links) {
            m_watcher.addPath(QString::fromStdString(file.parent_path().native()));
            const auto target = fs::read_symlink(file, error);
            if (error)
                break;
            file = file.parent_path() / target;
            if (const auto zone = zoneOfFile(file); zone.isValid()) {
                set(zone);
                return;
            }
        }
        set(QTimeZone::systemTimeZone());
    }

    fs::path m_link;
    QFileSystemWatcher m_watcher;
};

} // namespace

TimeZone::TimeZone(QTimeZone zone) : m_current(std::move(zone)) {}

void TimeZone::set(const QTimeZone& zone)
{
    if (m_current == zone)
        return;
    m_current = zone;
    emit changed();
}

std::shared_ptr<TimeZone> makeSystemTimeZone(const fs::path& link)
{
    if (qEnvironmentVariableIsSet("TZ") || !QCoreApplication::instance())
        return std::make_shared<TimeZone>(QTimeZone::systemTimeZone());
    return std::make_shared<SystemTimeZone>(link);
}

} // namespace clavo
