// SPDX-License-Identifier: MIT
// instance_probe claim|claim-alone|replace|openPanel|toggle|quit|status
//
// A process that asks to be the instance, prints what it has become, then every request it gets,
// after the token of the desktop if there is one, and ends at the request to quit; or one that
// makes a request, or asks for the status, and prints what came of it. "claim-alone" goes on
// without a bus.
#include "platform/dbus/DBusInstance.h"

#include <QCoreApplication>

#include <array>
#include <cstdio>
#include <map>
#include <string>

namespace
{

using clavo::Instance;

void tell(const char* word)
{
    std::puts(word);
    std::fflush(stdout);
}

const std::map<std::string, Instance::Request, std::less<>> requests{
    {"openPanel", Instance::Request::openPanel},
    {"toggle", Instance::Request::toggle},
    {"quit", Instance::Request::quit}};

const std::map<Instance::Role, const char*> roles{{Instance::Role::primary, "first"},
                                                  {Instance::Role::secondary, "second"},
                                                  {Instance::Role::unknown, "unknown"}};

const std::map<Instance::Delivery, const char*> deliveries{
    {Instance::Delivery::delivered, "delivered"},
    {Instance::Delivery::notRunning, "notRunning"},
    {Instance::Delivery::noAnswer, "noAnswer"},
    {Instance::Delivery::unreachable, "unreachable"}};

int run(Instance& instance)
{
    const auto receiver = [](Instance::Request received) {
        if (const auto token = qgetenv("XDG_ACTIVATION_TOKEN"); !token.isEmpty())
            tell(token.constData());
        for (const auto& [word, request] : requests) {
            if (request == received)
                tell(word.c_str());
        }
        if (received == Instance::Request::quit)
            QCoreApplication::exit();
    };
    instance.receive(receiver, [] { return "fine, thanks: é"; });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const std::string word = argc == 2 ? argv[1] : "";
    const auto instance = clavo::makeDBusInstance();
    if (const auto request = requests.find(word); request != requests.end()) {
        tell(deliveries.at(instance->send(request->second)));
        return 0;
    }
    if (word == "status") {
        const auto answer = instance->askStatus();
        tell(answer.delivery == Instance::Delivery::delivered ? answer.status.c_str()
                                                              : deliveries.at(answer.delivery));
        return 0;
    }
    const auto role = word == "replace" ? instance->replace() : instance->claim();
    tell(roles.at(role));
    const bool goesOn = word == "claim-alone" && role == Instance::Role::unknown;
    return goesOn || role == Instance::Role::primary ? run(*instance) : 0;
}
