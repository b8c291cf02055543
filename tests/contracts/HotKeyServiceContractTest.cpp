// SPDX-License-Identifier: MIT
#include "fakes/FakeHotKeyService.h"

#include "contracts/HotKeyServiceContract.h"

namespace clavo
{
namespace
{

/// A desktop in which everything happens at once.
class FakeHotKeyRig
{
public:
    HotKeyService& service() { return m_service; }
    void strike(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        m_service.press(keyCode, modifiers);
    }
    template <typename Condition> bool until(Condition condition) { return condition(); }

private:
    FakeHotKeyService m_service;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, HotKeyServiceContract, FakeHotKeyRig);

} // namespace
} // namespace clavo
