// SPDX-License-Identifier: MIT
#include "architecture/SourceTree.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <optional>
#include <regex>
#include <string_view>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

constexpr std::size_t longestFile = 400;

// In dependency order: a layer sees itself and those before it.
constexpr std::array<std::string_view, 17> layers = {
    "log",  "files", "text",  "time", "keyboard", "synth",        "packs",    "audio",  "input",
    "tray", "loop",  "stats", "app",  "ui",       "presentation", "platform", "program"};
constexpr std::array<std::string_view, 10> layersWithoutQt = {
    "log", "files", "text", "time", "keyboard", "synth", "packs", "audio", "input", "tray"};
// The same for the folders of src/platform/.
constexpr std::array<std::string_view, 13> technologies = {
    "none",  "posix", "inotify", "qt",    "systemd",  "xdg",  "procfs",
    "evdev", "x11",   "dbus",    "atspi", "pipewire", "pulse"};
// Each puts the technologies of one system together: it sees them all and none sees it.
constexpr std::array<std::string_view, 3> compositions = {"linux", "macos", "portable"};
constexpr std::string_view platformLayer = "platform";
constexpr std::string_view platformHeader = "platform/Platform.h";

constexpr std::array<std::string_view, 6> namelessFolders = {"common", "helper", "helpers",
                                                             "misc",   "util",   "utils"};
constexpr std::array<std::string_view, 4> sourceSuffixes = {".cpp", ".h", ".mm", ".qml"};

template <typename Range> bool contains(const Range& range, std::string_view value)
{
    return std::ranges::find(range, value) != range.end();
}

/// The place in the order; nothing when the name is not in it.
template <typename Order> std::optional<std::size_t> rank(const Order& order, std::string_view name)
{
    const auto found = std::ranges::find(order, name);
    if (found == order.end())
        return {};
    return static_cast<std::size_t>(found - order.begin());
}

/// The part of a path with this index; empty when the path has no folder there.
std::string folderIn(const fs::path& path, std::ptrdiff_t index)
{
    const auto folders = path.parent_path();
    return std::distance(folders.begin(), folders.end()) > index
               ? std::next(folders.begin(), index)->string()
               : std::string();
}

/// One file of the tree and what its rules have found.
class File
{
public:
    File(const fs::path& root, const fs::path& path, std::vector<std::string>& broken)
        : m_name(path.lexically_relative(root).generic_string()), m_broken(broken)
    {
        std::ifstream stream(path);
        for (std::string line; std::getline(stream, line);)
            m_lines.push_back(line);
    }

    void check()
    {
        const auto suffix = fs::path(m_name).extension().string();
        const bool isScript = !m_lines.empty() && m_lines.front().starts_with("#!");
        const bool isBuild = fs::path(m_name).filename() == "CMakeLists.txt";
        if (!isScript && !isBuild && !contains(sourceSuffixes, suffix))
            return;
        checkLicence();
        if (m_lines.size() > longestFile)
            report(m_lines.size(), "a file has at most 400 lines");
        if (suffix == ".cpp" || suffix == ".h" || suffix == ".mm")
            checkDirectives();
    }

private:
    void report(std::size_t line, std::string_view rule)
    {
        m_broken.push_back(m_name + ":" + std::to_string(line) + ": " + std::string(rule));
    }

    /// The first line, or the second where the first names the interpreter.
    void checkLicence()
    {
        const auto tells = [](const std::string& line) {
            return line.find("SPDX-License-Identifier: MIT") != std::string::npos;
        };
        const auto end = m_lines.begin() + std::min<std::ptrdiff_t>(std::ssize(m_lines), 2);
        if (std::none_of(m_lines.begin(), end, tells))
            report(1, "the licence line is missing");
    }

    void checkDirectives()
    {
        static const std::regex own(R"re(\s*#\s*(?:include|import)\s*"([^"]+)".*)re");
        static const std::regex foreign(R"re(\s*#\s*(?:include|import)\s*<([^>]+)>.*)re");
        static const std::regex qt(R"(Q.*|q\w+\.h)");
        static const std::regex systemCondition(
            R"(\s*#\s*(?:if|ifdef|ifndef|elif|elifdef|elifndef)\b.*\b(?:__linux__|__linux|__gnu_linux__|__unix__|__unix|__APPLE__|__MACH__|TARGET_OS_\w+|_WIN32|_WIN64|WIN32|__ANDROID__|__FreeBSD__|__OpenBSD__|__NetBSD__|Q_OS_\w+).*)");

        const bool isInSource = m_name.starts_with("src/");
        const auto layer = isInSource ? folderIn(m_name, 1) : std::string();
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            auto line = m_lines[i];
            const auto number = i + 1;
            while (line.ends_with('\\') && i + 1 < m_lines.size()) {
                line.pop_back();
                line += m_lines[++i];
            }
            std::smatch match;
            if (layer != platformLayer && std::regex_match(line, systemCondition))
                report(number, "only src/platform/ tells operating systems apart");
            if (isInSource && std::regex_match(line, match, own))
                checkInclude(number, layer, match.str(1));
            if (contains(layersWithoutQt, layer) && std::regex_match(line, match, foreign) &&
                std::regex_match(match.str(1), qt))
                report(number, "src/" + layer + "/ does without Qt");
        }
    }

    void checkInclude(std::size_t line, const std::string& layer, const std::string& header)
    {
        const auto wanted = folderIn(header, 0);
        if (!rank(layers, wanted))
            report(line, header + " is not named from src/");
        else if (!rank(layers, layer))
            report(line, "src/" + layer + "/ has no place among the layers");
        else if (layer == platformLayer && wanted == platformLayer)
            checkTechnology(line, folderIn(m_name, 2), folderIn(header, 1));
        else if (*rank(layers, wanted) > *rank(layers, layer) ||
                 (layer == platformLayer && *rank(layers, wanted) > *rank(layers, "app")))
            report(line, "src/" + layer + "/ does not know " + wanted);
        else if (wanted == platformLayer && layer != platformLayer && header != platformHeader)
            report(line, "src/platform/ is seen through its Platform.h alone");
    }

    void checkTechnology(std::size_t line, const std::string& folder, const std::string& wanted)
    {
        if (wanted.empty() || wanted == folder)
            return; // Platform.h names none.
        const bool isKnown = rank(technologies, folder) || contains(compositions, folder);
        if (!isKnown)
            report(line, "src/platform/" + folder + "/ has no place among the technologies");
        else if (!rank(technologies, wanted) ||
                 (rank(technologies, folder) &&
                  *rank(technologies, wanted) > *rank(technologies, folder)))
            report(line, "src/platform/" + folder + "/ does not know platform/" + wanted);
    }

    std::string m_name;
    std::vector<std::string> m_lines;
    std::vector<std::string>& m_broken;
};

} // namespace

std::vector<std::string> brokenRules(const fs::path& root)
{
    std::vector<std::string> broken;
    for (auto entry = fs::recursive_directory_iterator(root); entry != fs::end(entry); ++entry) {
        const auto name = entry->path().filename().string();
        if (entry->is_directory()) {
            if (entry.depth() == 0 && (name == "build" || name == ".git"))
                entry.disable_recursion_pending();
            else if (contains(namelessFolders, name))
                broken.push_back(entry->path().lexically_relative(root).generic_string() +
                                 ": the folder's name says nothing");
        } else if (entry->is_regular_file()) {
            File(root, entry->path(), broken).check();
        }
    }
    std::ranges::sort(broken);
    return broken;
}

} // namespace clavo
