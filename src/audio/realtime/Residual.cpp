// SPDX-License-Identifier: MIT
#include "audio/realtime/Residual.h"

#include <cmath>
#include <cstddef>

namespace clavo
{
namespace
{

constexpr float decay = 0.977579F; // Per frame: exp(−1 / 44.1), a time constant of 1 ms.
constexpr float inaudible = 1e-6F; // −120 dB. Ends the fade long before numbers become denormal.

} // namespace

void Residual::add(float left, float right) noexcept CLAVO_NONBLOCKING
{
    if (std::isfinite(m_left + left) && std::isfinite(m_right + right)) {
        m_left += left;
        m_right += right;
    }
}

void Residual::addTo(StereoBlock block) noexcept CLAVO_NONBLOCKING
{
    for (std::size_t i = 0; i < block.frames(); ++i) {
        if (std::abs(m_left) < inaudible && std::abs(m_right) < inaudible) {
            clear();
            return;
        }
        block.left[i] += m_left;
        block.right[i] += m_right;
        m_left *= decay;
        m_right *= decay;
    }
}

void Residual::clear() noexcept CLAVO_NONBLOCKING
{
    m_left = 0;
    m_right = 0;
}

} // namespace clavo
