// SPDX-License-Identifier: MIT
#include "audio/realtime/Mixer.h"

#include <algorithm>
#include <tuple>

namespace clavo
{

bool Mixer::start(std::size_t voice, const VoiceStart& start) noexcept
{
    if (m_outstanding == soundLimit)
        return false;
    ++m_outstanding;
    ++m_started;
    return m_commands.push(
        {.start = start, .serial = m_started, .voice = static_cast<std::uint32_t>(voice)});
}

void Mixer::setVolume(float volume) noexcept
{
    // This order of the arguments turns NaN into 0.
    m_volume.store(std::min(std::max(0.0F, volume), 1.0F), std::memory_order_relaxed);
}

void Mixer::silence() noexcept
{
    m_silenced.store(m_started, std::memory_order_release);
}

std::optional<std::uint32_t> Mixer::takeFinished() noexcept
{
    const auto sound = m_finished.pop();
    if (sound)
        --m_outstanding;
    return sound;
}

void Mixer::render(StereoBlock out) noexcept CLAVO_NONBLOCKING
{
    dropSilenced();
    takeCommands();
    std::ranges::fill(out.left, 0.0F);
    std::ranges::fill(out.right, 0.0F);
    for (Voice& voice : m_voices)
        addVoice(voice, out);
    m_residual.addTo(out);
    applyVolume(out);
    m_limiter.apply(out);
}

void Mixer::dropSilenced() noexcept CLAVO_NONBLOCKING
{
    const Serial silenced = m_silenced.load(std::memory_order_acquire);
    if (silenced == m_dropped)
        return;
    m_dropped = silenced;
    for (Voice& voice : m_voices) {
        if (!voice.remaining.empty() && voice.serial <= m_dropped) {
            release(voice.sound);
            voice.remaining = {};
        }
    }
    m_residual.clear();
    m_limiter.reset();
}

void Mixer::takeCommands() noexcept CLAVO_NONBLOCKING
{
    while (const auto command = m_commands.pop()) {
        if (command->serial <= m_dropped)
            release(command->start.sound);
        else
            begin(m_voices[command->voice], *command);
    }
}

void Mixer::begin(Voice& voice, const Command& command) noexcept CLAVO_NONBLOCKING
{
    if (!voice.remaining.empty()) {
        // A sound that is cut before its first frame has no level to fade from.
        if (voice.isHeard) {
            const float next = voice.remaining.front();
            m_residual.add(next * voice.left, next * voice.right);
        }
        release(voice.sound);
    }
    const VoiceStart& start = command.start;
    voice = {.remaining = start.samples,
             .left = start.left,
             .right = start.right,
             .sound = start.sound,
             .serial = command.serial};
    if (voice.remaining.empty())
        release(voice.sound);
}

/// Adds what is left of a voice to the block and moves the voice past it.
void Mixer::addVoice(Voice& voice, StereoBlock out) noexcept CLAVO_NONBLOCKING
{
    const auto frames = std::min(voice.remaining.size(), out.frames());
    if (frames == 0)
        return;
    // Local copies cannot overlap the block, so the loop vectorises.
    const auto [samples, left, right] = std::tuple(voice.remaining, voice.left, voice.right);
    for (std::size_t i = 0; i < frames; ++i) {
        out.left[i] += samples[i] * left;
        out.right[i] += samples[i] * right;
    }
    voice.remaining = voice.remaining.subspan(frames);
    voice.isHeard = true;
    if (voice.remaining.empty())
        release(voice.sound);
}

/// Scales the block with a linear ramp that reaches the new volume at the last frame.
void Mixer::applyVolume(StereoBlock out) noexcept CLAVO_NONBLOCKING
{
    if (out.frames() == 0)
        return;
    const float target = m_volume.load(std::memory_order_relaxed);
    const float last = m_appliedVolume.value_or(target);
    m_appliedVolume = target;
    const float step = (target - last) / static_cast<float>(out.frames());
    const std::size_t rampFrames = last == target ? 0 : out.frames() - 1;
    for (std::size_t i = 0; i < rampFrames; ++i) {
        const float volume = last + step * static_cast<float>(static_cast<int>(i) + 1);
        out.left[i] *= volume;
        out.right[i] *= volume;
    }
    for (std::size_t i = rampFrames; i < out.frames(); ++i) {
        out.left[i] *= target;
        out.right[i] *= target;
    }
}

void Mixer::release(std::uint32_t sound) noexcept CLAVO_NONBLOCKING
{
    // The queue cannot be full: it has a place for every outstanding sound.
    static_cast<void>(m_finished.push(sound));
}

} // namespace clavo
