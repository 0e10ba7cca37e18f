#!/usr/bin/python3
"""A GTK 4 window with one focused field: gtk4_fields.py entry|textview|password TEXT"""
import sys

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import Gtk

kind, text = sys.argv[1:]


def open_window(application):
    if kind == "textview":
        field = Gtk.TextView(vexpand=True)
        field.get_buffer().set_text(text)
    else:
        field = Gtk.PasswordEntry() if kind == "password" else Gtk.Entry()
        field.set_text(text)
    window = Gtk.ApplicationWindow(application=application, title="Fields", child=field)
    window.present()
    field.grab_focus()


application = Gtk.Application(application_id="org.example.Fields")
application.connect("activate", open_window)
application.run(None)
