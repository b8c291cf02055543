# SPDX-License-Identifier: MIT
"""How a conversion fails, and what it prints."""

from __future__ import annotations

import re
from typing import Callable

# Receives one sentence for each thing that is left out or mended.
Warn = Callable[[str], None]


class Refused(Exception):
    """The source, or one pack of it, cannot be converted. The text is the reason."""


# Control characters, the marks that change the direction of text, and the surrogates that stand
# for the bytes of a file name that is not UTF-8.
_UNPRINTABLE = re.compile("[\0-\x1f\x7f-\x9f\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069"
                          "\ud800-\udfff]")


def printable(text: str) -> str:
    """The text as a terminal can show it: nothing in it is a command to the terminal or changes
    the order of what is shown."""
    return _UNPRINTABLE.sub("\ufffd", text)
