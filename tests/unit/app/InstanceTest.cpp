// SPDX-License-Identifier: MIT
#include "app/Instance.h"

#include "app/Status.h"

#include "fakes/FakeInstance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Optional;
using Delivery = Instance::Delivery;
using Request = Instance::Request;
using Role = Instance::Role;

class InstanceTest : public testing::Test
{
protected:
    FakeInstance m_instance;
    std::ostringstream m_errors;
};

TEST_F(InstanceTest, FirstStartRuns)
{
    EXPECT_EQ(startOrOpenPanel(m_instance, m_errors), std::nullopt);
    EXPECT_THAT(m_instance.sent, IsEmpty());
}

TEST_F(InstanceTest, StartRunsWhereThereIsNoTelling)
{
    m_instance.role = Role::unknown;

    EXPECT_EQ(startOrOpenPanel(m_instance, m_errors), std::nullopt);
    EXPECT_THAT(m_instance.sent, IsEmpty());
}

TEST_F(InstanceTest, ARunningInstanceThatCannotBeReachedIsNotTakenForNone)
{
    m_instance.delivery = Delivery::unreachable;
    const std::string message =
        "clavo: Clavo is running, but there is no session bus to reach it by\n";

    EXPECT_EQ(toggleRunning(m_instance, m_errors), 1);
    EXPECT_EQ(m_errors.str(), message);

    m_instance.role = Role::secondary;
    EXPECT_THAT(startOrOpenPanel(m_instance, m_errors), Optional(1));
    EXPECT_EQ(m_errors.str(), message + message);
}

TEST_F(InstanceTest, SecondStartOpensTheFirstOnesPanelAndEnds)
{
    m_instance.role = Role::secondary;

    EXPECT_THAT(startOrOpenPanel(m_instance, m_errors), Optional(0));
    EXPECT_THAT(m_instance.sent, ElementsAre(Request::openPanel));
    EXPECT_EQ(m_errors.str(), "");
}

TEST_F(InstanceTest, AStartReplacesAnInstanceThatEndsMeanwhile)
{
    m_instance.role = Role::secondary;
    m_instance.otherEnds = true;

    EXPECT_EQ(startOrOpenPanel(m_instance, m_errors), std::nullopt);
    EXPECT_EQ(m_instance.claims, 2);
    EXPECT_EQ(m_instance.role, Role::primary);
}

TEST_F(InstanceTest, ASecondStartReportsAnInstanceThatHangs)
{
    m_instance.role = Role::secondary;
    m_instance.delivery = Delivery::noAnswer;

    EXPECT_THAT(startOrOpenPanel(m_instance, m_errors), Optional(1));
    EXPECT_EQ(m_errors.str(),
              "clavo: the running Clavo does not answer; 'clavo --replace' takes its place\n");
}

TEST_F(InstanceTest, StartInTheBackgroundLeavesItToTheFirstAndOpensNothing)
{
    EXPECT_EQ(startUnlessRunning(m_instance, m_errors), std::nullopt);

    m_instance.role = Role::secondary;

    EXPECT_THAT(startUnlessRunning(m_instance, m_errors), Optional(0));
    EXPECT_THAT(m_instance.sent, IsEmpty());
    EXPECT_EQ(m_errors.str(), "");
}

TEST_F(InstanceTest, ReplacementRunsOnceTheOtherOneHasEnded)
{
    EXPECT_EQ(replaceRunning(m_instance, m_errors), std::nullopt);
    EXPECT_EQ(m_instance.replacements, 1);
    EXPECT_EQ(m_instance.claims, 0);
}

TEST_F(InstanceTest, ReplacementOfAnInstanceThatDoesNotEndFailsWithAMessage)
{
    m_instance.role = Role::secondary;

    EXPECT_THAT(replaceRunning(m_instance, m_errors), Optional(1));
    EXPECT_EQ(m_errors.str(), "clavo: the running Clavo does not end\n");
}

TEST_F(InstanceTest, ToggleAsksTheRunningInstanceAndClaimsNothing)
{
    EXPECT_EQ(toggleRunning(m_instance, m_errors), 0);
    EXPECT_THAT(m_instance.sent, ElementsAre(Request::toggle));
    EXPECT_EQ(m_instance.claims, 0);
    EXPECT_EQ(m_errors.str(), "");
}

TEST_F(InstanceTest, ToggleWithoutARunningInstanceFailsWithAMessage)
{
    m_instance.delivery = Delivery::notRunning;

    EXPECT_EQ(toggleRunning(m_instance, m_errors), 1);
    EXPECT_EQ(m_errors.str(), "clavo: Clavo is not running\n");
}

TEST_F(InstanceTest, ToggleOfAnInstanceThatHangsFailsWithAMessage)
{
    m_instance.delivery = Delivery::noAnswer;

    EXPECT_EQ(toggleRunning(m_instance, m_errors), 1);
    EXPECT_THAT(m_errors.str(), testing::HasSubstr("does not answer"));
}

TEST_F(InstanceTest, StatusIsPrintedForPeopleOrAsItCame)
{
    m_instance.status = jsonOf({.version = "7.8.9"});
    std::ostringstream text;
    std::ostringstream json;

    EXPECT_EQ(printStatus(m_instance, StatusFormat::text, text, m_errors), 0);
    EXPECT_EQ(printStatus(m_instance, StatusFormat::json, json, m_errors), 0);

    EXPECT_THAT(text.str(), testing::StartsWith("Clavo 7.8.9\n"));
    EXPECT_EQ(json.str(), m_instance.status);
    EXPECT_EQ(m_errors.str(), "");
    EXPECT_EQ(m_instance.claims, 0);
}

TEST_F(InstanceTest, StatusWithoutARunningInstanceFailsWithAMessage)
{
    m_instance.delivery = Delivery::notRunning;
    std::ostringstream output;

    EXPECT_EQ(printStatus(m_instance, StatusFormat::json, output, m_errors), 1);
    EXPECT_EQ(output.str(), "");
    EXPECT_EQ(m_errors.str(), "clavo: Clavo is not running\n");
}

TEST_F(InstanceTest, StatusOfAnInstanceThatHangsOrSaysNothingFailsWithAMessage)
{
    std::ostringstream output;

    EXPECT_EQ(printStatus(m_instance, StatusFormat::text, output, m_errors), 1);
    m_instance.delivery = Delivery::noAnswer;
    EXPECT_EQ(printStatus(m_instance, StatusFormat::text, output, m_errors), 1);

    EXPECT_EQ(output.str(), "");
    EXPECT_THAT(m_errors.str(), testing::HasSubstr("does not answer"));
}

} // namespace
} // namespace clavo
