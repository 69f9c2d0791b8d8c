#!/usr/bin/python3
"""A GTK entry in a window of its own, which prints on standard output what happens to it, a line each:
"focused", "text:" and its text after each change, "marked:" and what is marked."""
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402


def tell(line):
    sys.stdout.write(line + "\n")
    sys.stdout.flush()


def marked(entry, _):
    bounds = entry.get_selection_bounds()
    tell("marked:" + (entry.get_text()[bounds[0]:bounds[1]] if bounds else ""))


window = Gtk.Window(title="Entry")
entry = Gtk.Entry()
entry.connect("changed", lambda e: tell("text:" + e.get_text()))
entry.connect("notify::selection-bound", marked)
entry.connect("notify::cursor-position", marked)
window.connect("notify::is-active", lambda w, _: w.is_active() and tell("focused"))
window.connect("destroy", Gtk.main_quit)
window.add(entry)
window.set_default_size(400, 40)
window.show_all()
Gtk.main()
