# SPDX-License-Identifier: MIT
#
# gtk_password_window.py FILE
#
# A window with a field for a name, which has the keys first, and one for a password. The file holds
# how long the password is.
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402: the version comes first.


def write_length(entry):
    with open(sys.argv[1], "w", encoding="utf-8") as file:
        file.write(str(len(entry.get_text())))


name = Gtk.Entry()
password = Gtk.Entry(visibility=False)
password.connect("changed", write_length)
box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
box.add(name)
box.add(password)
window = Gtk.Window()
window.add(box)
window.show_all()
name.grab_focus()
Gtk.main()
