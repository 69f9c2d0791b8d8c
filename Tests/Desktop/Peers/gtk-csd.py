#!/usr/bin/python3
"""A GTK window that draws its decoration itself: a header bar, and shadows in transparent margins of the
window. Arguments: TITLE [X Y WIDTH HEIGHT [COLOUR]], the size without the margins. Prints on standard
output what happens to it, a line each: "shown", "focused", "maximized", "restored", "closed"."""
import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402


def tell(line):
    sys.stdout.write(line + "\n")
    sys.stdout.flush()


def state_changed(_, event):
    if event.changed_mask & Gdk.WindowState.MAXIMIZED:
        tell("maximized" if event.new_window_state & Gdk.WindowState.MAXIMIZED else "restored")


def closed(_):
    tell("closed")
    Gtk.main_quit()


arguments = sys.argv[1:]
title = arguments[0] if arguments else "Client side"
x, y, width, height = (int(argument) for argument in arguments[1:5]) if len(arguments) > 4 else (0, 0, 420, 300)
colour = arguments[5] if len(arguments) > 5 else "#204a87"

style = Gtk.CssProvider()
style.load_from_data(f"#content {{ background: {colour}; }}".encode())
Gtk.StyleContext.add_provider_for_screen(Gdk.Screen.get_default(), style, Gtk.STYLE_PROVIDER_PRIORITY_USER)

window = Gtk.Window()
window.set_titlebar(Gtk.HeaderBar(title=title, show_close_button=True))
window.set_title(title)
window.add(Gtk.EventBox(name="content"))
window.connect("map-event", lambda *_: tell("shown"))
window.connect("notify::is-active", lambda w, _: w.is_active() and tell("focused"))
window.connect("window-state-event", state_changed)
window.connect("destroy", closed)
window.set_default_size(width, height)
if len(arguments) > 4:
    window.move(x, y)
window.show_all()
Gtk.main()
