// SPDX-License-Identifier: MIT
#include "platform/none/NonePlatform.h"

#include "platform/none/SilentOutput.h"

#include <functional>
#include <optional>
#include <string>

namespace clavo
{
namespace
{

class NoEventTap final : public EventTap
{
public:
    [[nodiscard]] bool create(EventMask /*mask*/, Receiver /*receiver*/) override { return true; }
    void enable() override {}
    [[nodiscard]] std::string name() const override { return "nothing"; }
    void notifyNextMotion(std::function<void()> /*moved*/) override {}
    void setPositionUsed(bool /*isUsed*/) override {}
};

class NoSecureInput final : public SecureInput
{
public:
    [[nodiscard]] SecureReason reason() const override { return SecureReason::none; }
};

class NoScreens final : public Screens
{
public:
    [[nodiscard]] std::span<const ScreenExtent> extents() override { return {}; }
};

class NoHotKeyService final : public HotKeyService
{
public:
    [[nodiscard]] std::optional<HotKeyRef>
    registerHotKey(const HotKey& /*hotKey*/, std::function<void()> /*pressed*/) override
    {
        return std::nullopt;
    }
    void unregisterHotKey(HotKeyRef /*ref*/) override {}
};

class GrantedInputAccess final : public InputAccess
{
public:
    [[nodiscard]] State state() const override { return State::granted; }
    bool request(Occasion /*occasion*/) override { return true; }
    void showSettings() override {}
};

class NoLoginItem final : public LoginItem
{
public:
    [[nodiscard]] Status status() const override { return Status::notRegistered; }
    [[nodiscard]] std::optional<std::string> registerItem() override { return "not supported"; }
    [[nodiscard]] std::optional<std::string> unregisterItem() override { return std::nullopt; }
};

class NoRelauncher final : public Relauncher
{
public:
    void openNewInstance(std::function<void()> completed) override { completed(); }
};

class NoTrayHosts final : public TrayHosts
{
public:
    void watch(Receiver receiver) override { receiver(TrayHost::none); }
    [[nodiscard]] TrayAppearance appearance() override { return {}; }
    void dock(std::uint32_t /*window*/) override {}
};

class NoAppearanceSettings final : public AppearanceSettings
{
public:
    void watch(Receiver /*receiver*/) override {}
};

class NoFileManager final : public FileManager
{
public:
    void show(const std::filesystem::path& /*folder*/) override {}
};

class NoInstance final : public Instance
{
public:
    [[nodiscard]] Role claim() override { return Role::unknown; }
    [[nodiscard]] Role replace() override { return Role::unknown; }
    [[nodiscard]] Delivery send(Request /*request*/) override { return Delivery::notRunning; }
    [[nodiscard]] Answer askStatus() override { return {}; }
    void receive(Receiver /*receiver*/, Reporter /*reporter*/) override {}
};

} // namespace

Platform makeNonePlatform()
{
    Platform platform;
    platform.hotKeys = makeNoHotKeyService();
    platform.eventTap = std::make_unique<NoEventTap>();
    platform.secureInput = std::make_unique<NoSecureInput>();
    platform.screens = std::make_unique<NoScreens>();
    platform.audioOutput = makeSilentOutput();
    platform.inputAccess = std::make_unique<GrantedInputAccess>();
    platform.loginItem = std::make_unique<NoLoginItem>();
    platform.relauncher = std::make_unique<NoRelauncher>();
    platform.trayHosts = makeNoTrayHosts();
    platform.appearance = std::make_unique<NoAppearanceSettings>();
    platform.fileManager = std::make_unique<NoFileManager>();
    platform.instance = makeNoInstance();
    return platform;
}

std::unique_ptr<TrayHosts> makeNoTrayHosts()
{
    return std::make_unique<NoTrayHosts>();
}

std::unique_ptr<HotKeyService> makeNoHotKeyService()
{
    return std::make_unique<NoHotKeyService>();
}

std::unique_ptr<Instance> makeNoInstance()
{
    return std::make_unique<NoInstance>();
}

} // namespace clavo
