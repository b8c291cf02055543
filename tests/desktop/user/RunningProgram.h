// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace clavo
{

/// The real program on the desktop of the test, with the user's folders below one given folder.
/// The destructor ends it.
class RunningProgram
{
public:
    /// Opens nothing unless the arguments say otherwise.
    explicit RunningProgram(const std::filesystem::path& userFolder,
                            const QStringList& arguments = {"--background"});
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// True once it hears keys; false if it does not come to that.
    [[nodiscard]] bool listens();
    /// True once its sounds are heard; what is typed before is silent.
    [[nodiscard]] bool plays();
    /// True once it has written this line or one that starts with it.
    [[nodiscard]] bool says(std::string_view line);
    /// True once it has ended by itself with this status.
    [[nodiscard]] bool endsWith(int status);

    /// Asks it to end, as the session's end does; its exit status.
    int quit();
    /// Ends it without a warning.
    void kill();

    [[nodiscard]] std::vector<std::string> logLines();
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }

    /// The environment that makes the folder the user's.
    static QProcessEnvironment environment(const std::filesystem::path& userFolder);
    /// The program's file.
    static QString executable();

private:
    QByteArray m_log;
    QProcess m_process;
};

} // namespace clavo
