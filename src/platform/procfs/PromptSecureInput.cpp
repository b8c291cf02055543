// SPDX-License-Identifier: MIT
#include "platform/procfs/PromptSecureInput.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>

namespace clavo
{
namespace
{

using namespace std::string_view_literals;

// Prompts of GnuPG, of SSH and of desktops on behalf of the system.
constexpr std::array partsOfNames{"pinentry"sv,     "askpa"sv,  "openssh-as"sv,
                                  "gcr-prompter"sv, "polkit"sv, "policykit"sv};

class FocusedPrompt final : public PromptSecureInput
{
public:
    void setFocus(pid_t process) override
    {
        std::string name;
        if (process != 0)
            std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
        setReason(asksForPasswords(name) ? SecureReason::passwordPrompt : SecureReason::none);
    }
};

} // namespace

bool asksForPasswords(std::string_view program)
{
    return std::ranges::any_of(partsOfNames, [&](std::string_view part) {
        return program.find(part) != std::string_view::npos;
    });
}

std::unique_ptr<PromptSecureInput> makePromptSecureInput()
{
    return std::make_unique<FocusedPrompt>();
}

} // namespace clavo
