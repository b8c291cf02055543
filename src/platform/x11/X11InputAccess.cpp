// SPDX-License-Identifier: MIT
#include "platform/x11/X11InputAccess.h"

#include "log/Log.h"
#include "platform/inotify/FolderWatch.h"
#include "platform/x11/XInput.h"
#include "platform/x11/XServer.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

constexpr auto socketFolder = "/tmp/.X11-unix";
constexpr auto timeToStart = 1s; // From a server's socket to its first answer.

class X11InputAccess final : public InputAccess
{
public:
    explicit X11InputAccess(std::string display) : m_display(std::move(display)) {}

    /// A server that has granted it once is not asked again: it cannot refuse it later.
    [[nodiscard]] State state() const override
    {
        m_isGranted = m_isGranted || obstacle().empty();
        return m_isGranted ? State::granted : State::refused;
    }

    bool request(Occasion /*occasion*/) override { return isGranted(); }

    void showSettings() override
    {
        if (const auto found = obstacle(); !found.empty())
            log::error("{}", found);
    }

    void watch(std::function<void()> receiver) override
    {
        m_started.emplace();
        m_started->setSingleShot(true);
        m_started->callOnTimeout(std::move(receiver));
        if (const auto error = m_sockets.start())
            log::error(
                "inotify refusé ({}) : un serveur X démarré après dix minutes passera inaperçu",
                error.message());
    }

private:
    /// What keeps this process from listening; empty if nothing does.
    [[nodiscard]] std::string_view obstacle() const
    {
        const auto desktop = xcb::connect(m_display);
        if (!desktop.connection)
            return "serveur X injoignable";
        return announceXInput(desktop.connection.get()) ? "" : "le serveur X n'a pas XInput 2.1";
    }

    std::string m_display;
    mutable bool m_isGranted = false;
    std::optional<QTimer> m_started;
    FolderWatch m_sockets{socketFolder, [this](const auto&) { m_started->start(timeToStart); }};
};

} // namespace

std::unique_ptr<InputAccess> makeX11InputAccess(std::string display)
{
    return std::make_unique<X11InputAccess>(std::move(display));
}

} // namespace clavo
