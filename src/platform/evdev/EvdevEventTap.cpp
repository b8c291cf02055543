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

constexpr auto pause = 2s; // Between two looks for a folder that is not there.

} // namespace

class EvdevEventTap::Listener
{
public:
    Listener(Screens& screens, std::filesystem::path folder)
        : m_screens(screens), m_folder(std::move(folder))
    {
        m_soon.setSingleShot(true);
        m_retry.setSingleShot(true);
        QObject::connect(&m_soon, &QTimer::timeout, [this] { settle(); });
        QObject::connect(&m_retry, &QTimer::timeout, [this] { watchFolder(); });
    }

    bool create(EventMask mask, Receiver receiver)
    {
        m_mask = mask;
        m_receiver = std::move(receiver);
        watchFolder();
        const bool hears = std::ranges::any_of(
            m_sources, [](const auto& each) { return each.second->isKeyboard; });
        if (!hears) {
            m_retry.stop();
            m_changes.reset();
            m_watch.reset();
            m_sources.clear();
            m_decoder = {};
        }
        return hears;
    }

    /// Not here: the loss may still be on its way through the reader.
    void enable() { m_soon.start(0ms); }

    void notifyNextMotion(std::function<void()> moved)
    {
        m_moved = std::move(moved);
        chooseMotion();
    }

    void setPositionUsed(bool isUsed)
    {
        m_isPositionUsed = isUsed;
        chooseMotion();
    }

private:
    struct Source {
        std::filesystem::path node;
        std::unique_ptr<evdev::EvdevDevice> device;
        bool isKeyboard = false;
        bool isDropped = false; // Waits to be enabled.
        bool isGone = false;
        std::optional<QSocketNotifier> readable;
    };

    void watchFolder();
    void readChanges();
    void open(const std::filesystem::path& node);
    void read(int number, Source& source);
    void settle();
    void deliver(std::span<const RawEvent> events);
    void chooseMotion();

    Screens& m_screens;
    std::filesystem::path m_folder;
    EventMask m_mask = 0;
    Receiver m_receiver;
    std::function<void()> m_moved; // Waits for the next motion.
    bool m_isPositionUsed = true;
    bool m_hearsMotion = true; // What the devices have been told.

    std::optional<Descriptor> m_watch; // Of the folder.
    std::optional<QSocketNotifier> m_changes;
    std::map<int, std::unique_ptr<Source>> m_sources; // By the number the decoder knows.
    int m_lastNumber = 0;
    evdev::EvdevDecoder m_decoder;
    QTimer m_soon;
    QTimer m_retry;
};

/// The folder comes and goes with the devices. The watch is there before the look around, so that
/// no device is missed in between.
void EvdevEventTap::Listener::watchFolder()
{
    m_changes.reset();
    m_watch.emplace(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    // The right to read a node is given after the node is there: a change of its attributes.
    if (::inotify_add_watch(m_watch->number(), m_folder.c_str(),
                            IN_CREATE | IN_ATTRIB | IN_MOVED_TO | IN_DELETE_SELF | IN_ONLYDIR) <
        0) {
        m_retry.start(pause);
        return;
    }
    m_changes.emplace(m_watch->number(), QSocketNotifier::Read);
    QObject::connect(&*m_changes, &QSocketNotifier::activated, [this] { readChanges(); });

    std::error_code error;
    for (std::filesystem::directory_iterator entry(m_folder, error), end; !error && entry != end;
         entry.increment(error))
        open(entry->path());
}

void EvdevEventTap::Listener::readChanges()
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
                open(m_folder / std::string(change.name));
            next += sizeof(inotify_event) + change.len;
        }
    }
    if (isFolderGone || isIncomplete) {
        m_changes->setEnabled(false); // It is on the stack.
        m_retry.start(isFolderGone ? pause : 0ms);
    }
}

void EvdevEventTap::Listener::open(const std::filesystem::path& node)
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
                     [this, number, opened = source.get()] { read(number, *opened); });
    m_sources.emplace(number, std::move(source));
}

void EvdevEventTap::Listener::read(int number, Source& source)
{
    evdev::DeviceEvent event;
    while (true) {
        switch (source.device->read(event)) {
        case evdev::EvdevDevice::Outcome::event:
            deliver(m_decoder.decode(number, event, m_screens));
            if (m_moved && evdev::EvdevDecoder::isMotion(event)) {
                std::exchange(m_moved, nullptr)();
                chooseMotion();
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
            m_soon.start(0ms);
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

/// Goes on with the devices that lost events, closes those that are gone. Another device may have
/// taken the name of such a one before its end was noticed.
void EvdevEventTap::Listener::settle()
{
    std::vector<std::filesystem::path> freed;
    for (const auto& [number, source] : m_sources) {
        if (source->isGone)
            freed.push_back(source->node);
    }
    std::erase_if(m_sources, [](const auto& each) { return each.second->isGone; });
    for (const auto& node : freed)
        open(node);
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
        read(number, source);
    }
}

void EvdevEventTap::Listener::chooseMotion()
{
    const bool hears = m_isPositionUsed || m_moved;
    if (std::exchange(m_hearsMotion, hears) == hears)
        return;
    for (const auto& [number, source] : m_sources)
        source->device->setMotionHeard(hears);
}

void EvdevEventTap::Listener::deliver(std::span<const RawEvent> events)
{
    for (const auto& event : events) {
        if ((m_mask >> event.type & 1) != 0)
            m_receiver(event);
    }
}

EvdevEventTap::EvdevEventTap(Screens& screens, std::filesystem::path folder)
    : m_listener(std::make_unique<Listener>(screens, std::move(folder)))
{
}

EvdevEventTap::~EvdevEventTap() = default;

bool EvdevEventTap::create(EventMask mask, Receiver receiver)
{
    return m_listener->create(mask, std::move(receiver));
}

void EvdevEventTap::enable()
{
    m_listener->enable();
}

void EvdevEventTap::notifyNextMotion(std::function<void()> moved)
{
    m_listener->notifyNextMotion(std::move(moved));
}

void EvdevEventTap::setPositionUsed(bool isUsed)
{
    m_listener->setPositionUsed(isUsed);
}

} // namespace clavo
