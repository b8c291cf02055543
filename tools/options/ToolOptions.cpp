// SPDX-License-Identifier: MIT
#include "options/ToolOptions.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace clavo
{
namespace
{

constexpr int misuseStatus = 2;

// Latin-1 keeps every byte: the name of a file need not be UTF-8.
std::string bytes(const QString& text)
{
    return text.toLatin1().toStdString();
}

std::vector<std::string> bytes(const QStringList& texts)
{
    std::vector<std::string> all;
    for (const auto& text : texts)
        all.push_back(bytes(text));
    return all;
}

} // namespace

int ToolOptions::Answer::give() const
{
    std::fputs(text.c_str(), status == EXIT_SUCCESS ? stdout : stderr);
    return status;
}

ToolOptions::ToolOptions(std::string tool, std::string help,
                         const QList<QCommandLineOption>& options)
    : m_tool(std::move(tool)), m_help(std::move(help))
{
    m_parser.addOptions(options);
    m_parser.addOptions({{{"h", "help"}, {}}, {"version", {}}});
}

std::optional<ToolOptions::Answer> ToolOptions::read(std::span<const char* const> arguments)
{
    QStringList all{QString::fromLatin1(m_tool.data())};
    for (const auto* const argument : arguments)
        all.append(QString::fromLatin1(argument));
    const bool isUnderstood = m_parser.parse(all);
    if (isSet("help"))
        return Answer{m_help};
    if (isSet("version"))
        return Answer{fmt::format("{} {}\n", m_tool, CLAVO_VERSION)};
    return isUnderstood ? std::nullopt : std::optional(misuse(bytes(m_parser.errorText())));
}

ToolOptions::Answer ToolOptions::misuse(std::string_view what) const
{
    return {fmt::format("{0}: {1}\nTry '{0} --help'.\n", m_tool, what), misuseStatus};
}

bool ToolOptions::isSet(const char* option) const
{
    return m_parser.isSet(option);
}

std::optional<std::string> ToolOptions::value(const char* option) const
{
    return isSet(option) ? std::optional(bytes(m_parser.value(option))) : std::nullopt;
}

std::vector<std::string> ToolOptions::options() const
{
    return bytes(m_parser.optionNames());
}

std::vector<std::string> ToolOptions::arguments() const
{
    return bytes(m_parser.positionalArguments());
}

} // namespace clavo
