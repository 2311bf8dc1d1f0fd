"""One journey through bitlux-bench over the accessibility bus: type a word, send it, read the
answer and the log, start a continuous send and stop it."""

import os
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

DEADLINE = 30


def wait_for(what, find):
    """The first thing that `find` returns; fails loudly when it never does."""
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        try:
            found = find()
        except gi.repository.GLib.Error:
            found = None  # it went away while we looked
        if found:
            return found
        time.sleep(0.05)
    sys.exit(f"not found within {DEADLINE} s: {what}")


def walk(node, depth=0):
    yield node
    if depth < 12:
        for i in range(node.get_child_count()):
            child = node.get_child_at_index(i)
            if child is not None:
                yield from walk(child, depth + 1)


def find(root, role, name=None):
    for node in walk(root):
        if node.get_role_name() == role and (name is None or node.get_name() == name):
            if node.get_state_set().contains(Atspi.StateType.SHOWING):
                return node
    return None


def press(root, name):
    button = wait_for(f"button {name}", lambda: find(root, "push button", name))
    Atspi.Action.do_action(button, 0)


def log_lines(root):
    log = wait_for("log", lambda: find(root, "list", "Session Log"))
    return [log.get_child_at_index(i).get_name() for i in range(log.get_child_count())]


def application(name):
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(i)
        if child is not None and child.get_name() == name:
            return child
    return None


def start_display():
    """A display of our own; the server itself picks a number that is free."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1366x768x24", "-nolisten", "tcp"],
        pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.close(write_end)
    with os.fdopen(read_end) as pipe:
        number = pipe.readline().strip()
    if not number:
        sys.exit("Xvfb did not start")
    os.environ["DISPLAY"] = ":" + number
    return server


def main(program):
    server = start_display()
    process = subprocess.Popen([program])
    try:
        app = wait_for("application", lambda: application("Bitlux Forge"))
        window = wait_for("window", lambda: find(app, "frame"))
        entry = wait_for("entry", lambda: find(window, "text", "Word to Send (DI):"))
        Atspi.EditableText.set_text_contents(entry, "a5")
        press(window, "Send Once")
        wait_for("answer A5", lambda: find(window, "label", "A5"))
        expected = ["SPI Word Sent:", "  A5", "SPI Word Received:", "  A5", " "]
        # The entry is padded and kept as typed; the log shows upper case.
        wait_for(f"log {expected}", lambda: log_lines(window) == expected)

        press(window, "Send Continuously")
        note = ["Continuous Send Log Suspended", " "]
        wait_for(f"log ends with {note}", lambda: log_lines(window)[-2:] == note)
        press(window, "Stop")
        wait_for("idle buttons", lambda: find(window, "push button", "Send Continuously"))
        assert process.poll() is None
    finally:
        for child in (process, server):
            child.terminate()
            child.wait(timeout=10)
    print("journey done")


main(sys.argv[1])
