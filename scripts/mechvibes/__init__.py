# SPDX-License-Identifier: MIT
"""Converts Mechvibes packs to packs of Clavo, in these steps: `source` finds the packs, `config`
reads the config of a pack with the key names in `keys`, `audio` decodes and cuts the sounds, and
`convert` writes a pack folder."""
