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
constexpr auto notRunning = "clavo: Clavo is not running\n";

} // namespace

std::optional<int> startOrOpenPanel(Instance& instance, std::ostream& errors)
{
    // The other one may end in between. Its place is free then, unless a third one took it.
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (instance.claim() != Instance::Role::secondary)
            return std::nullopt;
        switch (instance.send(Instance::Request::openPanel)) {
        case Instance::Delivery::delivered:
            return EXIT_SUCCESS;
        case Instance::Delivery::noAnswer:
            errors << noAnswer;
            return EXIT_FAILURE;
        case Instance::Delivery::notRunning:
            break;
        }
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
    switch (instance.send(Instance::Request::toggle)) {
    case Instance::Delivery::delivered:
        return EXIT_SUCCESS;
    case Instance::Delivery::noAnswer:
        errors << noAnswer;
        break;
    case Instance::Delivery::notRunning:
        errors << notRunning;
        break;
    }
    return EXIT_FAILURE;
}

int printStatus(Instance& instance, StatusFormat format, std::ostream& output, std::ostream& errors)
{
    const auto answer = instance.askStatus();
    if (answer.delivery == Instance::Delivery::notRunning) {
        errors << notRunning;
        return EXIT_FAILURE;
    }
    const auto text = describe(answer.status);
    if (answer.delivery == Instance::Delivery::noAnswer || !text) {
        errors << noAnswer;
        return EXIT_FAILURE;
    }
    output << (format == StatusFormat::json ? answer.status : *text);
    return EXIT_SUCCESS;
}

} // namespace clavo
