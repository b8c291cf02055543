# SPDX-License-Identifier: MIT
"""Reads Mechvibes packs and writes them as packs of Clavo. One step each, in this order: `source`
finds the packs, `config` reads what a pack says, with the key names of `keys`, `audio` decodes and
cuts the sounds, and `convert` makes a pack folder of them."""
