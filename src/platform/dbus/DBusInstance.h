// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"

#include <memory>

namespace clavo
{

/// The owner of the application's name on the session's bus.
///
/// Another program can have the panel opened, too, as any application's window.
class DBusInstance final : public Instance
{
public:
    DBusInstance();
    ~DBusInstance() override;

    [[nodiscard]] Standing claim() override;
    [[nodiscard]] Standing replace() override;
    [[nodiscard]] Delivery send(Request request) override;
    [[nodiscard]] Answer askStatus() override;
    void receive(Receiver receiver, Reporter reporter) override;

private:
    class Inbox;

    Inbox& inbox();

    std::unique_ptr<Inbox> m_inbox;
};

} // namespace clavo
