// SPDX-License-Identifier: MIT
// Nothing: its target reads the headers that the programs of tests share.
