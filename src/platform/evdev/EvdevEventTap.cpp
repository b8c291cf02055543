// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevEventTap.h"

#include "files/Descriptor.h"
#include "log/Log.h"
#include "platform/evdev/EvdevDecoder.h"
#include "platform/evdev/EvdevDevice.h"

#include <QSocketNotifier>
#include <QTimer>

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
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

constexpr auto pause = 2s; // Between two attempts to watch a missing folder.

class EvdevEventTap final : public EventTap
{
public:
    EvdevEventTap(Screens& screens, std::filesystem::path folder)
        : m_screens(screens), m_folder(std::move(folder))
    {
        m_resumeTimer.setSingleShot(true);
        m_retryTimer.setSingleShot(true);
        m_resumeTimer.callOnTimeout([this] { resumeDevices(); });
        m_retryTimer.callOnTimeout([this] { watchFolder(); });
    }

    [[nodiscard]] bool create(EventMask mask, Receiver receiver) override
    {
        m_mask = mask;
        m_receiver = std::move(receiver);
        watchFolder();
        const bool hears = std::ranges::any_of(
            m_sources, [](const auto& each) { return each.second->isKeyboard; });
        if (!hears) {
            m_retryTimer.stop();
            m_changes.reset();
            m_watch.reset();
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

    /// The folder comes and goes with the devices. The watch starts before the devices are listed,
    /// so that none is missed in between.
    void watchFolder()
    {
        m_changes.reset();
        m_watch.emplace(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
        // Read permission is granted after the node has appeared, as a change of its attributes.
        if (::inotify_add_watch(m_watch->number(), m_folder.c_str(),
                                IN_CREATE | IN_ATTRIB | IN_MOVED_TO | IN_DELETE_SELF | IN_ONLYDIR) <
            0) {
            m_retryTimer.start(pause);
            return;
        }
        m_changes.emplace(m_watch->number(), QSocketNotifier::Read);
        QObject::connect(&*m_changes, &QSocketNotifier::activated, [this] { readChanges(); });

        std::error_code error;
        for (std::filesystem::directory_iterator entry(m_folder, error), end;
             !error && entry != end; entry.increment(error))
            openDevice(entry->path());
    }

    void readChanges()
    {
        alignas(inotify_event) std::array<char, 4096> buffer{};
        bool isFolderGone = false;
        bool isIncomplete = false;
        ssize_t count = 0;
        while ((count = ::read(m_watch->number(), buffer.data(), buffer.size())) > 0) {
            for (const char* next = buffer.data(); next < buffer.data() + count;) {
                const auto& change = *reinterpret_cast<const inotify_event*>(next);
                isFolderGone = isFolderGone || (change.mask & (IN_DELETE_SELF | IN_IGNORED)) != 0;
                isIncomplete = isIncomplete || (change.mask & IN_Q_OVERFLOW) != 0;
                if (change.len > 0)
                    openDevice(m_folder / std::string(change.name));
                next += sizeof(inotify_event) + change.len;
            }
        }
        if (isFolderGone || isIncomplete) {
            m_changes->setEnabled(false); // Not destroyed: it is on the stack.
            m_retryTimer.start(isFolderGone ? pause : 0ms);
        }
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

    std::optional<Descriptor> m_watch; // For changes of the folder.
    std::optional<QSocketNotifier> m_changes;
    std::map<int, std::unique_ptr<Source>> m_sources; // By their number in the decoder.
    int m_lastNumber = 0;
    evdev::EvdevDecoder m_decoder;
    QTimer m_resumeTimer;
    QTimer m_retryTimer;
};

} // namespace

std::unique_ptr<EventTap> makeEvdevEventTap(Screens& screens, std::filesystem::path folder)
{
    return std::make_unique<EvdevEventTap>(screens, std::move(folder));
}

} // namespace clavo
