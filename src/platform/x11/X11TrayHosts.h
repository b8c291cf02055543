// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <memory>
#include <string>

namespace clavo
{

/// The XEmbed host of an X11 session: the owner of its system-tray selection.
///
/// The first answer is given at once. The X server is waited for with it and with the tray's look,
/// and with nothing else. There is no host any more when the server is lost.
class X11TrayHosts final : public TrayHosts
{
public:
    /// Watches the display; the session's own one if it is empty.
    explicit X11TrayHosts(std::string display = {});
    ~X11TrayHosts() override;

    void watch(Receiver receiver) override;
    TrayAppearance appearance() override;
    /// Of a window of the running QGuiApplication.
    void dock(std::uint32_t window) override;

private:
    class Watch;

    std::string m_display;
    std::unique_ptr<Watch> m_watch;
};

/// Null when the program is built without the technology.
[[nodiscard]] std::unique_ptr<TrayHosts> makeX11TrayHosts(std::string display = {});

} // namespace clavo
