// SPDX-License-Identifier: MIT
#include "platform/procfs/PromptSecureInput.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

#include <sys/prctl.h>
#include <unistd.h>

namespace clavo
{
namespace
{

TEST(AsksForPasswords, IsTrueOfTheProgramsThatDo)
{
    for (const auto* program :
         {"pinentry", "pinentry-gtk-2", "pinentry-qt", "ssh-askpass", "x11-ssh-askpass",
          "gnome-ssh-askpa", "ksshaskpass", "lxqt-openssh-as", "gcr-prompter", "polkit-gnome-au",
          "polkit-kde-auth", "lxpolkit", "xfce-polkit", "lxqt-policykit-"})
        EXPECT_TRUE(asksForPasswords(program)) << program;
}

TEST(AsksForPasswords, IsFalseOfOthers)
{
    for (const auto* program : {"", "firefox", "xterm", "ssh", "gpg-agent", "keepassxc", "pin"})
        EXPECT_FALSE(asksForPasswords(program)) << program;
}

/// This process under another name.
class PromptSecureInputTest : public testing::Test
{
protected:
    PromptSecureInputTest() { prctl(PR_GET_NAME, m_name.data()); }
    ~PromptSecureInputTest() override { prctl(PR_SET_NAME, m_name.data()); }

    std::unique_ptr<PromptSecureInput> secureInput = makePromptSecureInput();

private:
    std::array<char, 16> m_name{};
};

TEST_F(PromptSecureInputTest, IsOnWhileAPromptIsInFront)
{
    EXPECT_FALSE(secureInput->isEnabled());
    secureInput->setFocus(getpid());
    EXPECT_FALSE(secureInput->isEnabled());

    prctl(PR_SET_NAME, "pinentry-test");
    secureInput->setFocus(getpid());
    EXPECT_EQ(secureInput->reason(), SecureReason::passwordPrompt);

    secureInput->setFocus(getppid());
    EXPECT_EQ(secureInput->reason(), SecureReason::none);
}

TEST_F(PromptSecureInputTest, IsOffForAProcessThatIsNotKnown)
{
    prctl(PR_SET_NAME, "pinentry-test");
    secureInput->setFocus(getpid());

    secureInput->setFocus(0);
    EXPECT_FALSE(secureInput->isEnabled());
    secureInput->setFocus(1 << 30);
    EXPECT_FALSE(secureInput->isEnabled());
}

} // namespace
} // namespace clavo
