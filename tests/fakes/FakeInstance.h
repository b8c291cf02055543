// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"

#include <string>
#include <utility>
#include <vector>

namespace clavo
{

/// An instance in a made-up session.
class FakeInstance : public Instance
{
public:
    [[nodiscard]] Role claim() override
    {
        ++claims;
        return role;
    }
    [[nodiscard]] Role replace() override
    {
        ++replacements;
        return role;
    }
    [[nodiscard]] Delivery send(Request request) override
    {
        sent.push_back(request);
        if (otherEnds)
            role = Role::primary;
        return otherEnds ? Delivery::notRunning : delivery;
    }
    [[nodiscard]] Answer askStatus() override { return {delivery, status}; }
    void receive(Receiver receiver, Reporter reporter) override
    {
        m_receiver = std::move(receiver);
        m_reporter = std::move(reporter);
    }

    /// Another process makes a request of this one.
    void deliver(Request request) const { m_receiver(request); }
    /// The answer to another process that asks for the status of this one.
    [[nodiscard]] std::string report() const { return m_reporter(); }

    Role role = Role::primary;
    Delivery delivery = Delivery::delivered;
    bool otherEnds = false; // Before the next request reaches it.
    int claims = 0;
    int replacements = 0;
    std::vector<Request> sent;
    std::string status; // Of the instance that runs.

private:
    Receiver m_receiver;
    Reporter m_reporter;
};

} // namespace clavo
