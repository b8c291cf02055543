// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <memory>

class QObject;

namespace clavo
{

/// The StatusNotifier hosts of the session's bus.
///
/// Nothing waits for the bus: the first answer comes from the event loop, at once only where there
/// is no bus.
class DBusTrayHosts final : public TrayHosts
{
public:
    DBusTrayHosts();
    ~DBusTrayHosts() override;

    void watch(Receiver receiver) override;
    void dock(std::uint32_t /*window*/) override {}

private:
    std::unique_ptr<QObject> m_watch;
};

} // namespace clavo
