// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <memory>
#include <string>

namespace clavo
{

/// The XEmbed host of an X11 session: the owner of its system-tray selection.
///
/// The first answer is given at once and is the only one the X server is waited for. There is no
/// host any more when the server is lost.
class X11TrayHosts final : public TrayHosts
{
public:
    /// Watches the display; the session's own one if it is empty.
    explicit X11TrayHosts(std::string display = {});
    ~X11TrayHosts() override;

    void watch(Receiver receiver) override;
    /// Of a window of the running QGuiApplication.
    void dock(std::uint32_t window) override;

private:
    class Watch;

    std::string m_display;
    std::unique_ptr<Watch> m_watch;
};

} // namespace clavo
