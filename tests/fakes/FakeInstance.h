// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"

#include <utility>
#include <vector>

namespace clavo
{

/// An instance in a made-up session.
class FakeInstance : public Instance
{
public:
    [[nodiscard]] Standing claim() override
    {
        ++claims;
        return standing;
    }
    [[nodiscard]] Standing replace() override
    {
        ++replacements;
        return standing;
    }
    [[nodiscard]] Delivery send(Request request) override
    {
        sent.push_back(request);
        if (otherEnds)
            standing = Standing::first;
        return otherEnds ? Delivery::nobodyRuns : delivery;
    }
    void receive(Receiver receiver) override { m_receiver = std::move(receiver); }

    /// Another process makes a request of this one.
    void deliver(Request request) const { m_receiver(request); }

    Standing standing = Standing::first;
    Delivery delivery = Delivery::delivered;
    bool otherEnds = false; // Before the next request reaches it.
    int claims = 0;
    int replacements = 0;
    std::vector<Request> sent;

private:
    Receiver m_receiver;
};

} // namespace clavo
