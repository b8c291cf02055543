// SPDX-License-Identifier: MIT
#include "app/Instance.h"

#include "app/Status.h"

#include <cstdlib>

namespace clavo
{
namespace
{

constexpr auto noAnswer = "clavo: the running Clavo does not answer; 'clavo --replace' takes its "
                          "place\n";
constexpr auto unreachable =
    "clavo: Clavo is running, but there is no session bus to reach it by\n";
constexpr auto notRunning = "clavo: Clavo is not running\n";

/// The status to exit with after a request, whose failure is written to `errors`.
int exitStatus(Instance::Delivery delivery, std::ostream& errors)
{
    if (delivery == Instance::Delivery::delivered)
        return EXIT_SUCCESS;
    errors << (delivery == Instance::Delivery::notRunning    ? notRunning
               : delivery == Instance::Delivery::unreachable ? unreachable
                                                             : noAnswer);
    return EXIT_FAILURE;
}

} // namespace

std::optional<int> startOrOpenPanel(Instance& instance, std::ostream& errors)
{
    // The other instance may end in between. Its role is free then, unless a third process has it.
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (instance.claim() != Instance::Role::secondary)
            return std::nullopt;
        const auto delivery = instance.send(Instance::Request::openPanel);
        if (delivery != Instance::Delivery::notRunning)
            return exitStatus(delivery, errors);
    }
    return std::nullopt;
}

std::optional<int> startUnlessRunning(Instance& instance, std::ostream& /*errors*/)
{
    return instance.claim() == Instance::Role::secondary ? std::optional(EXIT_SUCCESS)
                                                         : std::nullopt;
}

std::optional<int> replaceRunning(Instance& instance, std::ostream& errors)
{
    if (instance.replace() != Instance::Role::secondary)
        return std::nullopt;
    errors << "clavo: the running Clavo does not end\n";
    return EXIT_FAILURE;
}

int toggleRunning(Instance& instance, std::ostream& errors)
{
    return exitStatus(instance.send(Instance::Request::toggle), errors);
}

int printStatus(Instance& instance, StatusFormat format, std::ostream& output, std::ostream& errors)
{
    const auto [delivery, status] = instance.askStatus();
    if (delivery != Instance::Delivery::delivered)
        return exitStatus(delivery, errors);
    const auto text = format == StatusFormat::json ? printableJson(status) : describe(status);
    if (!text)
        return exitStatus(Instance::Delivery::noAnswer, errors);
    output << *text;
    return EXIT_SUCCESS;
}

} // namespace clavo
