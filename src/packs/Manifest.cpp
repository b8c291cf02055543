// SPDX-License-Identifier: MIT
#include "packs/Manifest.h"

#include "text/ParseNumber.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <utility>

namespace clavo
{
namespace
{

/// Collects the manifest's members while the text is parsed. Every function returns whether the
/// text can still be a manifest.
class ManifestReader final : public nlohmann::json_sax<nlohmann::json>
{
public:
    [[nodiscard]] std::optional<Manifest> manifest() &&
    {
        if (!m_id || !m_name || !m_detail || !m_category || !m_press || !m_release)
            return std::nullopt;
        return Manifest{*std::move(m_id),       *std::move(m_name),  *std::move(m_detail),
                        *std::move(m_category), std::move(m_credit), *std::move(m_press),
                        *std::move(m_release)};
    }

    bool null() override
    {
        const bool isCredit = m_depth == 1 && m_text == &m_credit;
        if (isCredit)
            m_credit.reset();
        return isCredit || isIgnored();
    }

    bool boolean(bool) override { return isIgnored(); }
    bool number_integer(number_integer_t) override { return isIgnored(); }
    bool number_unsigned(number_unsigned_t) override { return isIgnored(); }
    bool number_float(number_float_t, const string_t&) override { return isIgnored(); }
    bool binary(binary_t&) override { return isIgnored(); }

    bool string(string_t& value) override
    {
        if (m_depth == 1 && m_text != nullptr)
            *m_text = std::move(value);
        else if (m_depth == 2 && m_sounds != nullptr)
            (**m_sounds)[m_scancode] = std::move(value);
        else
            return isIgnored();
        return true;
    }

    bool start_object(std::size_t) override
    {
        const bool isManifest = m_depth == 0;
        const bool isSounds = m_depth == 1 && m_sounds != nullptr;
        if (!isManifest && !isSounds && !isIgnored())
            return false;
        if (isSounds)
            m_sounds->emplace();
        ++m_depth;
        return true;
    }

    bool key(string_t& name) override
    {
        if (m_depth == 1) {
            m_text = textNamed(name);
            m_sounds = soundsNamed(name);
        } else if (m_depth == 2 && m_sounds != nullptr) {
            m_scancode = std::move(name);
        }
        return true;
    }

    bool start_array(std::size_t) override
    {
        if (!isIgnored())
            return false;
        ++m_depth;
        return true;
    }

    bool end_object() override { return leaveLevel(); }
    bool end_array() override { return leaveLevel(); }

    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception&) override
    {
        return false;
    }

private:
    using Text = std::optional<std::string>;
    using Sounds = std::optional<Manifest::SoundNames>;

    [[nodiscard]] Text* textNamed(std::string_view name)
    {
        return name == "id"         ? &m_id
               : name == "name"     ? &m_name
               : name == "detail"   ? &m_detail
               : name == "category" ? &m_category
               : name == "credit"   ? &m_credit
                                    : nullptr;
    }

    [[nodiscard]] Sounds* soundsNamed(std::string_view name)
    {
        return name == "press" ? &m_press : name == "release" ? &m_release : nullptr;
    }

    /// Whether the current value belongs to an unknown member.
    [[nodiscard]] bool isIgnored() const
    {
        return m_depth > 0 && m_text == nullptr && m_sounds == nullptr;
    }

    bool leaveLevel()
    {
        --m_depth;
        return true;
    }

    std::size_t m_depth = 0;
    // The member being read, a text or a map of sounds. Both are null for an unknown member.
    Text* m_text = nullptr;
    Sounds* m_sounds = nullptr;
    std::string m_scancode;

    Text m_id;
    Text m_name;
    Text m_detail;
    Text m_category;
    Text m_credit;
    Sounds m_press;
    Sounds m_release;
};

} // namespace

std::optional<Manifest> parseManifest(std::string_view json)
{
    ManifestReader reader;
    if (!nlohmann::json::sax_parse(json.begin(), json.end(), &reader))
        return std::nullopt;
    return std::move(reader).manifest();
}

std::optional<std::int64_t> parseScancode(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    return parseNumber<std::int64_t>(text);
}

} // namespace clavo
