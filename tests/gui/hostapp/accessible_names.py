#!/usr/bin/python3
"""Reads the running program as a screen reader does: accessible_names.py SKYLET

Writes the accessible trees of both views and of the settings dialog. Fails when a control that can have
the focus has no name. Needs a display and a session bus of its own.
"""
import os
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

SECONDS = 30
WINDOWS = (Atspi.Role.FRAME, Atspi.Role.DIALOG, Atspi.Role.WINDOW)
TREES = (Atspi.Role.TREE, Atspi.Role.TREE_TABLE)
SETTINGS = "Settings"  # how the English menu entry begins


def children(node):
    try:
        found = [node.get_child_at_index(i) for i in range(node.get_child_count())]
    except GLib.Error:  # it has gone meanwhile
        return []
    return [child for child in found if child is not None]


def nodes(node, depth=0):
    yield depth, node
    for child in children(node):
        yield from nodes(child, depth + 1)


def wait_for(what, look):
    end = time.monotonic() + SECONDS
    while time.monotonic() < end:
        found = look()
        if found:
            return found
        time.sleep(0.1)
    sys.exit(f"failed: no {what} within {SECONDS} s")


def application(process):
    for app in children(Atspi.get_desktop(0)):
        if app.get_process_id() == process.pid:
            return app
    if process.poll() is not None:
        sys.exit(f"failed: the program left with {process.returncode}")
    return None


def shown_window(app, known=()):
    for window in children(app):
        is_shown = window.get_state_set().contains(Atspi.StateType.SHOWING)
        if is_shown and window.get_role() in WINDOWS and window.get_name() not in known:
            return window
    return None


def is_control(node):
    states = node.get_state_set()
    return (
        states.contains(Atspi.StateType.FOCUSABLE)
        and states.contains(Atspi.StateType.SHOWING)
        and node.get_role() not in WINDOWS
    )


def is_named(node):
    if node.get_role() != Atspi.Role.COMBO_BOX:
        return bool(node.get_name().strip())
    # Its name is what is chosen in it; what is chosen there, its label says.
    return any(
        relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
        and any(relation.get_target(i).get_name().strip() for i in range(relation.get_n_targets()))
        for relation in node.get_relation_set()
    )


def unnamed_controls(window, at_least):
    """Writes the tree of a window; the controls in it that have no name."""
    unnamed = []
    count = 0
    for depth, node in nodes(window):
        line = f"{'  ' * depth}{node.get_role_name()} '{node.get_name()}'"
        if is_control(node):
            count += 1
            line += " *"
            if not is_named(node):
                unnamed.append(line.strip())
        print(line)
    print(f"{count} controls that can have the focus (*), {len(unnamed)} without a name")
    if count < at_least:
        sys.exit(f"failed: there are at least {at_least} in '{window.get_name()}'")
    return unnamed


def has_settings(app):
    return any(
        node.get_role() == Atspi.Role.MENU_ITEM and node.get_name().startswith(SETTINGS)
        for _, node in nodes(app)
    )


def press(keys, window_name):
    window = subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--name", f"^{window_name}$"],
        check=True, capture_output=True, text=True, timeout=SECONDS,
    ).stdout.split()[0]
    # No window manager gives the focus here.
    subprocess.run(["xdotool", "windowfocus", "--sync", window], check=True, timeout=SECONDS)
    subprocess.run(["xdotool", "key", keys], check=True, timeout=SECONDS)


def check(process):
    app = wait_for("program on the accessibility bus", lambda: application(process))
    main = wait_for("window", lambda: shown_window(app))
    wait_for("operator page", lambda: any(
        node.get_role() == Atspi.Role.RADIO_BUTTON for _, node in nodes(main)))
    print("== Usage")
    unnamed = unnamed_controls(main, 6)
    press("ctrl+2", main.get_name())
    wait_for("statistics", lambda: any(
        node.get_role() in TREES and node.get_state_set().contains(Atspi.StateType.SHOWING)
        for _, node in nodes(main)))
    print("== Statistics")
    unnamed += unnamed_controls(main, 3)
    if has_settings(app):
        press("ctrl+comma", main.get_name())
        dialog = wait_for("settings dialog", lambda: shown_window(app, (main.get_name(),)))
        print("== Settings")
        unnamed += unnamed_controls(dialog, 12)
    return unnamed


def main():
    environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    program = [sys.argv[1], "--demo", "--view", "usage", "--language", "en",
               "--seconds", str(4 * SECONDS)]
    process = subprocess.Popen(program, env=environment)
    try:
        unnamed = check(process)
    finally:
        process.terminate()
        process.wait(SECONDS)
    for control in unnamed:
        print(f"failed: without a name: {control}")
    return 1 if unnamed else 0


sys.exit(main())
