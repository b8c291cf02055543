# SPDX-License-Identifier: MIT
"""How a conversion fails and what it tells."""

from __future__ import annotations

from typing import Callable

# Told of everything that is left out or mended, a sentence at a time.
Warn = Callable[[str], None]


class Refused(Exception):
    """The source, or one pack of it, cannot be converted. The text is the reason."""
