// SPDX-License-Identifier: MIT
#include "desktop/user/KernelDevices.h"

#include <linux/input.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <map>
#include <mutex>
#include <span>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace clavo
{
namespace
{

std::string nodeOf(int number)
{
    return "/dev/input/event" + std::to_string(number);
}

std::vector<std::uint8_t> bits(const std::set<std::uint16_t>& codes)
{
    std::vector<std::uint8_t> bytes(KEY_CNT / 8);
    for (const auto code : codes)
        bytes.at(code / 8) |= static_cast<std::uint8_t>(1 << code % 8);
    return bytes;
}

template <typename Value> std::vector<std::uint8_t> bytesOf(const Value& value)
{
    std::vector<std::uint8_t> bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

std::vector<std::uint8_t> bytesOfText(const std::string& text)
{
    return {text.c_str(), text.c_str() + text.size() + 1};
}

} // namespace

DeviceKind keyboardKind()
{
    DeviceKind kind{.name = "Test keyboard"};
    for (std::uint16_t code = KEY_ESC; code <= KEY_MICMUTE; ++code)
        kind.keys.insert(code);
    return kind;
}

DeviceKind mouseKind()
{
    return {.name = "Test mouse",
            .keys = {BTN_LEFT, BTN_RIGHT, BTN_MIDDLE, BTN_SIDE},
            .axes = {REL_X, REL_Y, REL_WHEEL, REL_HWHEEL}};
}

DeviceKind fineWheelMouseKind()
{
    auto kind = mouseKind();
    kind.axes.insert({REL_WHEEL_HI_RES, REL_HWHEEL_HI_RES});
    return kind;
}

DeviceKind tabletKind()
{
    return {.name = "Test tablet",
            .keys = {BTN_LEFT, BTN_RIGHT},
            .absoluteX = evdev::DeviceTraits::Range{.least = 0, .greatest = 1000}};
}

/// What the kernel knows of a device. The questions come on another thread, also while the device
/// is taken away.
class KernelDevice::Knowledge
{
public:
    explicit Knowledge(DeviceKind kind) : m_kind(std::move(kind)) {}

    void note(const evdev::DeviceEvent& event);
    [[nodiscard]] bool isHeard(const evdev::DeviceEvent& event);
    void setGone() { m_isGone = true; }
    [[nodiscard]] bool isGone() const { return m_isGone; }
    [[nodiscard]] clockid_t clock() const { return m_clock; }

    /// Answers these questions from the shared knowledge for as long as it is asked.
    static void connect(UMockdevIoctlBase* answers, const std::shared_ptr<Knowledge>& shared);

private:
    static gboolean answer(UMockdevIoctlBase* base, UMockdevIoctlClient* client, gpointer self);
    static gboolean refuse(UMockdevIoctlBase* base, UMockdevIoctlClient* client, gpointer self);
    [[nodiscard]] std::optional<std::vector<std::uint8_t>> answerTo(unsigned long request);
    void leaveOut(UMockdevIoctlData* argument);
    void chooseClock(UMockdevIoctlData* argument);

    DeviceKind m_kind;
    std::mutex m_mutex;
    std::set<std::uint16_t> m_down;
    std::map<std::uint32_t, std::vector<std::uint8_t>> m_masks; // Of the codes of a type of event.
    std::atomic<bool> m_isGone = false;
    std::atomic<clockid_t> m_clock = CLOCK_REALTIME; // Of the events' times.
};

void KernelDevice::Knowledge::connect(UMockdevIoctlBase* answers,
                                      const std::shared_ptr<Knowledge>& shared)
{
    using Handler = gboolean (*)(UMockdevIoctlBase*, UMockdevIoctlClient*, gpointer);
    const auto handle = [&](const char* question, Handler handler) {
        g_signal_connect_data(
            answers, question, G_CALLBACK(handler), new std::shared_ptr<Knowledge>(shared),
            [](gpointer own, GClosure* /*closure*/) {
                delete static_cast<std::shared_ptr<Knowledge>*>(own);
            },
            GConnectFlags{});
    };
    handle("handle-ioctl", &Knowledge::answer);
    handle("handle-read", &Knowledge::refuse);
}

void KernelDevice::Knowledge::note(const evdev::DeviceEvent& event)
{
    if (event.type != EV_KEY)
        return;
    const std::scoped_lock lock(m_mutex);
    if (event.value == 0)
        m_down.erase(event.code);
    else
        m_down.insert(event.code);
}

bool KernelDevice::Knowledge::isHeard(const evdev::DeviceEvent& event)
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_masks.find(event.type);
    if (found == m_masks.end())
        return true;
    const auto& codes = found->second;
    return event.code / 8U < codes.size() && (codes[event.code / 8U] >> event.code % 8U & 1U) != 0;
}

gboolean KernelDevice::Knowledge::answer(UMockdevIoctlBase* /*base*/, UMockdevIoctlClient* client,
                                         gpointer self)
{
    auto& knowledge = **static_cast<std::shared_ptr<Knowledge>*>(self);
    const auto request = umockdev_ioctl_client_get_request(client);
    if (request == EVIOCSMASK) {
        knowledge.leaveOut(umockdev_ioctl_client_get_arg(client));
        umockdev_ioctl_client_complete(client, 0, 0);
        return TRUE;
    }
    if (request == EVIOCSCLOCKID)
        knowledge.chooseClock(umockdev_ioctl_client_get_arg(client));
    const auto reply = knowledge.answerTo(request);
    if (!reply) {
        umockdev_ioctl_client_complete(client, -1, EINVAL);
        return TRUE;
    }
    const auto size = std::min<std::size_t>(_IOC_SIZE(request), reply->size());
    auto* const argument = umockdev_ioctl_client_get_arg(client);
    auto* const target = umockdev_ioctl_data_resolve(argument, 0, _IOC_SIZE(request), nullptr);
    auto bytes = *reply;
    umockdev_ioctl_data_update(target, 0, bytes.data(), static_cast<gint>(size));
    umockdev_ioctl_client_complete(client, static_cast<glong>(size), 0);
    umockdev_ioctl_data_unref(target);
    return TRUE;
}

void KernelDevice::Knowledge::leaveOut(UMockdevIoctlData* argument)
{
    auto* const question = umockdev_ioctl_data_resolve(argument, 0, sizeof(input_mask), nullptr);
    input_mask mask{};
    std::memcpy(&mask, question->data, sizeof mask);
    auto* const codes = umockdev_ioctl_data_resolve(question, offsetof(input_mask, codes_ptr),
                                                    mask.codes_size, nullptr);
    const std::scoped_lock lock(m_mutex);
    m_masks[mask.type].assign(codes->data, codes->data + mask.codes_size);
    umockdev_ioctl_data_unref(codes);
    umockdev_ioctl_data_unref(question);
}

void KernelDevice::Knowledge::chooseClock(UMockdevIoctlData* argument)
{
    auto* const question = umockdev_ioctl_data_resolve(argument, 0, sizeof(int), nullptr);
    int clock = 0;
    std::memcpy(&clock, question->data, sizeof clock);
    m_clock = clock;
    umockdev_ioctl_data_unref(question);
}

/// Fails reading from a device that is gone; otherwise the read goes on.
gboolean KernelDevice::Knowledge::refuse(UMockdevIoctlBase* /*base*/, UMockdevIoctlClient* client,
                                         gpointer self)
{
    if (!(*static_cast<std::shared_ptr<Knowledge>*>(self))->m_isGone)
        return FALSE;
    umockdev_ioctl_client_complete(client, -1, ENODEV);
    return TRUE;
}

/// What the kernel answers (drivers/input/evdev.c in its sources); nothing for what it would
/// refuse.
std::optional<std::vector<std::uint8_t>> KernelDevice::Knowledge::answerTo(unsigned long request)
{
    constexpr unsigned int abilities = _IOC_NR(EVIOCGBIT(0, 0));
    constexpr unsigned int ranges = _IOC_NR(EVIOCGABS(0));
    if (_IOC_TYPE(request) != 'E')
        return std::nullopt;
    switch (const unsigned int number = _IOC_NR(request)) {
    case _IOC_NR(EVIOCGVERSION):
        return bytesOf(EV_VERSION);
    case _IOC_NR(EVIOCGID):
        return bytesOf(input_id{.bustype = BUS_USB, .vendor = 1, .product = 1, .version = 1});
    case _IOC_NR(EVIOCGNAME(0)):
    case _IOC_NR(EVIOCGPHYS(0)):
    case _IOC_NR(EVIOCGUNIQ(0)):
        return bytesOfText(m_kind.name);
    case _IOC_NR(EVIOCGPROP(0)):
    case _IOC_NR(EVIOCGLED(0)):
    case _IOC_NR(EVIOCGSW(0)):
        return bits({});
    case _IOC_NR(EVIOCGKEY(0)): {
        const std::scoped_lock lock(m_mutex);
        return bits(m_down);
    }
    case _IOC_NR(EVIOCSCLOCKID):
        return std::vector<std::uint8_t>{};
    case abilities: {
        std::set<std::uint16_t> types{EV_SYN, EV_KEY};
        if (!m_kind.axes.empty())
            types.insert(EV_REL);
        if (m_kind.absoluteX)
            types.insert(EV_ABS);
        return bits(types);
    }
    case abilities + EV_KEY:
        return bits(m_kind.keys);
    case abilities + EV_REL:
        return bits(m_kind.axes);
    case abilities + EV_ABS:
        return bits(m_kind.absoluteX ? std::set<std::uint16_t>{ABS_X, ABS_Y}
                                     : std::set<std::uint16_t>{});
    case ranges + ABS_X:
    case ranges + ABS_Y:
        if (!m_kind.absoluteX)
            return std::nullopt;
        return bytesOf(input_absinfo{.value = 0,
                                     .minimum = m_kind.absoluteX->least,
                                     .maximum = m_kind.absoluteX->greatest,
                                     .fuzz = 0,
                                     .flat = 0,
                                     .resolution = 0});
    default:
        return number > abilities && number < abilities + EV_CNT ? std::optional(bits({}))
                                                                 : std::nullopt;
    }
}

KernelDevice::KernelDevice(UMockdevTestbed* testbed, int number, DeviceKind kind)
    : m_testbed(testbed), m_node(nodeOf(number)),
      m_path("/devices/test/input" + std::to_string(number) + "/event" + std::to_string(number)),
      m_knowledge(std::make_shared<Knowledge>(std::move(kind))),
      m_answers(umockdev_ioctl_base_new())
{
    const auto description =
        "P: " + m_path + "\nN: " + m_node.substr(5) + "\nE: DEVNAME=" + m_node +
        "\nE: SUBSYSTEM=input\nA: dev=13:" + std::to_string(64 + number) + "\n\n";
    Knowledge::connect(m_answers, m_knowledge);
    // The answers exist before the node does: a watcher of the folder asks at once.
    if (!umockdev_testbed_attach_ioctl(m_testbed, m_node.c_str(), m_answers, nullptr) ||
        !umockdev_testbed_add_from_string(m_testbed, description.c_str(), nullptr))
        throw std::runtime_error("there is no " + m_node);
}

KernelDevice::~KernelDevice()
{
    if (!m_knowledge->isGone())
        unplug();
    umockdev_testbed_detach_ioctl(m_testbed, m_node.c_str(), nullptr);
    g_object_unref(m_answers);
}

void KernelDevice::setReadable(bool readable) const
{
    ::chmod(m_node.c_str(), readable ? 0600 : 0);
    // The node is a link here, and a watcher of the folder is notified only when the link itself
    // changes.
    g_autofree gchar* root = umockdev_testbed_get_root_dir(m_testbed);
    std::ignore = ::lchown((root + m_node).c_str(), ::geteuid(), ::getegid());
}

void KernelDevice::unplug()
{
    m_knowledge->setGone();
    std::ignore = write({{.type = EV_SYN, .code = SYN_REPORT}}); // Makes its readers look.
    umockdev_testbed_remove_device(m_testbed, ("/sys" + m_path).c_str());
}

void KernelDevice::send(std::initializer_list<evdev::DeviceEvent> events)
{
    std::ranges::for_each(events, [this](const auto& event) { m_knowledge->note(event); });
    std::vector<evdev::DeviceEvent> packet;
    std::ranges::copy_if(events, std::back_inserter(packet),
                         [this](const auto& event) { return m_knowledge->isHeard(event); });
    if (packet.empty())
        return;
    packet.push_back({.type = EV_SYN, .code = SYN_REPORT});
    sendAll(packet);
}

void KernelDevice::key(std::uint16_t code, bool down)
{
    send({{.type = EV_KEY, .code = code, .value = down ? 1 : 0}});
}

void KernelDevice::strike(std::uint16_t code)
{
    key(code, true);
    key(code, false);
}

void KernelDevice::lose(std::initializer_list<evdev::DeviceEvent> events)
{
    std::ranges::for_each(events, [this](const auto& event) { m_knowledge->note(event); });
    sendAll({{.type = EV_SYN, .code = SYN_DROPPED}, {.type = EV_SYN, .code = SYN_REPORT}});
}

void KernelDevice::sendAll(const std::vector<evdev::DeviceEvent>& events) const
{
    if (!write(events))
        throw std::runtime_error("nobody can be told by " + m_node);
}

bool KernelDevice::write(const std::vector<evdev::DeviceEvent>& events) const
{
    timespec now{};
    ::clock_gettime(m_knowledge->clock(), &now);
    std::vector<input_event> told;
    for (const auto& event : events) {
        input_event each{};
        each.input_event_sec = now.tv_sec;
        each.input_event_usec = now.tv_nsec / 1000;
        each.type = event.type;
        each.code = event.code;
        each.value = event.value;
        told.push_back(each);
    }
    const auto bytes = std::as_bytes(std::span(told));
    const int line = umockdev_testbed_get_dev_fd(m_testbed, m_node.c_str());
    return ::write(line, bytes.data(), bytes.size()) == std::ssize(bytes);
}

KernelDevices::KernelDevices() : m_testbed(umockdev_testbed_new())
{
    if (umockdev_in_mock_environment() == FALSE)
        throw std::runtime_error("these tests are run by umockdev-wrapper");
    plugIn({.name = "Test lid"}); // Every machine has devices without keys to type on.
}

KernelDevices::~KernelDevices()
{
    m_devices.clear();
    g_object_unref(m_testbed);
}

KernelDevice& KernelDevices::plugIn(DeviceKind kind)
{
    const int number = static_cast<int>(m_devices.size());
    m_devices.push_back(std::make_unique<KernelDevice>(m_testbed, number, std::move(kind)));
    return *m_devices.back();
}

} // namespace clavo
