// SPDX-License-Identifier: MIT
#pragma once

#include "app/Relauncher.h"

#include <utility>

namespace clavo
{

/// Opens nothing; completes when the test says so.
class FakeRelauncher : public Relauncher
{
public:
    void openNewInstance(std::function<void()> completed) override
    {
        ++opened;
        m_completed = std::move(completed);
    }

    void complete() { std::exchange(m_completed, nullptr)(); }

    int opened = 0;

private:
    std::function<void()> m_completed;
};

} // namespace clavo
