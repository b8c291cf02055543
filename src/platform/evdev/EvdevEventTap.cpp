// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevEventTap.h"

#include "log/Log.h"
#include "platform/evdev/EvdevDecoder.h"
#include "platform/evdev/EvdevDevice.h"
#include "platform/inotify/FolderWatch.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

class EvdevEventTap final : public EventTap
{
public:
    EvdevEventTap(Screens& screens, std::filesystem::path folder)
        : m_screens(screens), m_folder(std::move(folder)),
          m_watch(m_folder, [this](const auto& names) { handleChanges(names); })
    {
        m_resumeTimer.setSingleShot(true);
        m_resumeTimer.callOnTimeout([this] { resumeDevices(); });
    }

    [[nodiscard]] bool create(EventMask mask, Receiver receiver) override
    {
        m_mask = mask;
        m_receiver = std::move(receiver);
        watchFolder();
        const bool hears = std::ranges::any_of(
            m_sources, [](const auto& each) { return each.second->isKeyboard; });
        if (!hears) {
            m_watch.stop();
            m_sources.clear();
            m_decoder = {};
        }
        return hears;
    }

    void enable() override { m_resumeTimer.start(0ms); } // The loss may be on the stack.

    [[nodiscard]] std::string name() const override { return "/dev/input"; }

    void notifyNextMotion(std::function<void()> moved) override
    {
        m_moved = std::move(moved);
        updateMotion();
    }

    void setPositionUsed(bool isUsed) override
    {
        m_isPositionUsed = isUsed;
        updateMotion();
    }

private:
    struct Source {
        std::filesystem::path node;
        std::unique_ptr<evdev::EvdevDevice> device;
        bool isKeyboard = false;
        bool isDropped = false; // Its events were dropped; waits for enable().
        bool isGone = false;
        std::optional<QSocketNotifier> readable;
    };

    /// The watch starts before the devices are listed, so that none is missed in between.
    void watchFolder()
    {
        const auto error = m_watch.start();
        if (error && !std::exchange(m_isUnwatched, true))
            log::error(
                "inotify refusé ({}) : un périphérique branché plus tard ne sera pas entendu",
                error.message());
        openDevices();
    }

    void openDevices()
    {
        std::error_code error;
        for (std::filesystem::directory_iterator entry(m_folder, error), end;
             !error && entry != end; entry.increment(error))
            openDevice(entry->path());
    }

    /// Read permission is granted after the node has appeared, as a change of its attributes.
    void handleChanges(std::span<const std::string> names)
    {
        if (names.empty())
            openDevices();
        for (const auto& name : names)
            openDevice(m_folder / name);
    }

    void openDevice(const std::filesystem::path& node)
    {
        const bool isOpen = std::ranges::any_of(m_sources, [&](const auto& each) {
            return each.second->node == node && !each.second->isGone;
        });
        if (isOpen || !evdev::isDeviceNode(node))
            return;
        auto device = evdev::EvdevDevice::open(node);
        if (!device)
            return;
        const auto traits = device->traits();
        if (!traits.isWanted())
            return;
        const int number = ++m_lastNumber;
        m_decoder.add(number, traits, device->keysDown());
        auto source = std::make_unique<Source>();
        source->node = node;
        source->isKeyboard = traits.hasTypingKeys;
        source->readable.emplace(device->descriptor(), QSocketNotifier::Read);
        device->setMotionHeard(m_hearsMotion);
        source->device = std::move(device);
        QObject::connect(&*source->readable, &QSocketNotifier::activated,
                         [this, number, opened = source.get()] { readDevice(number, *opened); });
        m_sources.emplace(number, std::move(source));
    }

    void readDevice(int number, Source& source)
    {
        evdev::DeviceEvent event;
        while (true) {
            switch (source.device->read(event)) {
            case evdev::EvdevDevice::Outcome::event:
                deliver(m_decoder.decode(number, event, m_screens));
                if (m_moved && evdev::EvdevDecoder::isMotion(event)) {
                    std::exchange(m_moved, nullptr)();
                    updateMotion();
                }
                continue;
            case evdev::EvdevDevice::Outcome::nothingMore:
                return;
            case evdev::EvdevDevice::Outcome::dropped:
                source.isDropped = true;
                source.readable->setEnabled(false);
                m_receiver({.type = RawEventType::tapDisabledByTimeout});
                return;
            case evdev::EvdevDevice::Outcome::gone:
                source.isGone = true;
                source.readable->setEnabled(false);
                deliver(m_decoder.remove(number));
                m_resumeTimer.start(0ms);
                const bool isAnyLeft = std::ranges::any_of(
                    m_sources, [](const auto& each) { return !each.second->isGone; });
                if (!isAnyLeft) {
                    log::notice("périphériques d'entrée perdus : écoute interrompue");
                    m_receiver({.type = RawEventType::tapDisabledByTimeout});
                }
                return;
            }
        }
    }

    /// Resumes the devices that lost events and closes those that are gone. Another device may have
    /// taken a node's name before its end was noticed.
    void resumeDevices()
    {
        std::vector<std::filesystem::path> freed;
        for (const auto& [number, source] : m_sources) {
            if (source->isGone)
                freed.push_back(source->node);
        }
        std::erase_if(m_sources, [](const auto& each) { return each.second->isGone; });
        for (const auto& node : freed)
            openDevice(node);
        if (!m_watch.isWatching())
            watchFolder();
        std::vector<int> dropped;
        for (const auto& [number, source] : m_sources) {
            if (source->isDropped)
                dropped.push_back(number);
        }
        for (const int number : dropped) {
            auto& source = *m_sources.at(number);
            source.isDropped = false;
            source.device->synchronize();
            deliver(m_decoder.resynchronize(number, source.device->keysDown()));
            source.readable->setEnabled(true);
            readDevice(number, source);
        }
    }

    void deliver(std::span<const RawEvent> events)
    {
        for (const auto& event : events) {
            if ((m_mask >> event.type & 1) != 0)
                m_receiver(event);
        }
    }

    void updateMotion()
    {
        const bool hears = m_isPositionUsed || m_moved;
        if (std::exchange(m_hearsMotion, hears) == hears)
            return;
        for (const auto& [number, source] : m_sources)
            source->device->setMotionHeard(hears);
    }

    Screens& m_screens;
    std::filesystem::path m_folder;
    EventMask m_mask = 0;
    Receiver m_receiver;
    std::function<void()> m_moved; // Called at the next motion.
    bool m_isPositionUsed = true;
    bool m_hearsMotion = true; // What the devices report at present.

    FolderWatch m_watch;
    bool m_isUnwatched = false; // The watch was refused, which is logged once.
    std::map<int, std::unique_ptr<Source>> m_sources; // By their number in the decoder.
    int m_lastNumber = 0;
    evdev::EvdevDecoder m_decoder;
    QTimer m_resumeTimer;
};

} // namespace

std::unique_ptr<EventTap> makeEvdevEventTap(Screens& screens, std::filesystem::path folder)
{
    return std::make_unique<EvdevEventTap>(screens, std::move(folder));
}

} // namespace clavo
