// SPDX-License-Identifier: MIT
#include "fakes/FakeEventTap.h"

#include "contracts/EventTapContract.h"

namespace clavo
{
namespace
{

/// A desktop in which everything happens at once.
class FakeTapRig
{
public:
    EventTap& tap() { return m_tap; }

    void key(std::int64_t code, bool down)
    {
        const bool isModifier = code >= 54 && code <= 63;
        const auto type = isModifier ? RawEventType::flagsChanged
                          : down     ? RawEventType::keyDown
                                     : RawEventType::keyUp;
        m_tap.deliver({.type = type, .keyCode = code});
    }

    void click(bool down, double x)
    {
        m_tap.deliver(
            {.type = down ? RawEventType::leftMouseDown : RawEventType::leftMouseUp, .x = x});
    }

    void wheel(double x) { m_tap.deliver({.type = RawEventType::scrollWheel, .x = x}); }
    void movePointer(double) { m_tap.movePointer(); }
    void lose() { m_tap.disable(); }
    void restore() {}

    template <typename Condition> bool until(Condition condition) { return condition(); }

private:
    FakeEventTap m_tap;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, EventTapContract, FakeTapRig);

} // namespace
} // namespace clavo
