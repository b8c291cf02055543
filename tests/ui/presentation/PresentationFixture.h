// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/Demonstration.h"

#include "app/LanguageSetting.h"
#include "unit/app/AppStateFixture.h"
#include "unit/packs/PackFiles.h"

#include <QQmlEngine>

#include <optional>

namespace clavo
{

/// The application in its demonstration, with a pack of every category.
class PresentationFixture : public AppStateFixture
{
protected:
    PresentationFixture()
    {
        addPack("nk-cream", "NK Cream", "linear");
        addPack("brown", "Brown", "tactile");
        addPack("blue", "Blue", "clicky");
        addPack("topre", "Topre", "special");
        writeFile(customPacks() / "mine" / "pack.json", manifestText("", "", "mine", "Mine"));
        setDemonstrationSettings(*defaults);
        stats = demonstrationStats();
    }

    LanguageSetting& language()
    {
        if (!m_language)
            m_language.emplace(*defaults);
        return *m_language;
    }

    QQmlEngine engine;

private:
    void addPack(std::string_view id, std::string_view name, std::string_view category) const
    {
        writeFile(builtInPacks() / id / "pack.json", manifestText("", "", id, name, category));
    }

    std::optional<LanguageSetting> m_language;
};

} // namespace clavo
