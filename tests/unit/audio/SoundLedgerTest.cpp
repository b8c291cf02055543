// SPDX-License-Identifier: MIT
#include "audio/SoundLedger.h"

#include <gmock/gmock.h>

#include <memory>
#include <set>
#include <vector>

namespace clavo
{
namespace
{

AudioBufferPtr sound()
{
    return std::make_shared<const AudioBuffer>(std::vector<float>{0.5F});
}

TEST(SoundLedger, KeepsABufferAliveUntilItIsLetGo)
{
    SoundLedger ledger;
    auto buffer = sound();
    const std::weak_ptr<const AudioBuffer> observed = buffer;

    const auto number = ledger.keep(std::move(buffer));

    ASSERT_TRUE(number.has_value());
    EXPECT_FALSE(observed.expired());
    EXPECT_FALSE(ledger.isEmpty());
    ledger.release(*number);
    EXPECT_TRUE(observed.expired());
    EXPECT_TRUE(ledger.isEmpty());
}

TEST(SoundLedger, KeepsTheSameBufferTwiceUnderTwoNumbers)
{
    SoundLedger ledger;
    auto buffer = sound();
    const std::weak_ptr<const AudioBuffer> observed = buffer;
    const auto first = ledger.keep(buffer);
    const auto second = ledger.keep(std::move(buffer));
    ASSERT_TRUE(first && second);
    ASSERT_NE(*first, *second);

    ledger.release(*first);
    EXPECT_FALSE(observed.expired());
    ledger.release(*second);
    EXPECT_TRUE(observed.expired());
}

TEST(SoundLedger, HasPlaceForItsCapacityAndNoMore)
{
    SoundLedger ledger;
    const auto buffer = sound();
    std::set<std::uint32_t> numbers;
    for (std::size_t i = 0; i < SoundLedger::capacity; ++i)
        numbers.insert(ledger.keep(buffer).value());

    EXPECT_EQ(numbers.size(), SoundLedger::capacity);
    EXPECT_EQ(ledger.keep(buffer), std::nullopt);
    EXPECT_EQ(buffer.use_count(), 1 + static_cast<long>(SoundLedger::capacity));

    ledger.release(17);
    EXPECT_EQ(ledger.keep(buffer), 17U);
}

} // namespace
} // namespace clavo
