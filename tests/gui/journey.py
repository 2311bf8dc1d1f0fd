"""One journey through bitlux-bench over the accessibility bus: type a word, send it, read the
answer and the log, start a continuous send and stop it, light a bit of a panel. What a screen reader
would be announced on the way is checked too."""

import os
import subprocess
import sys
import tempfile

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

BEATS = 600  # before it is given up


def wait_for(what, find):
    """The first thing that `find` returns; fails loudly when it never does."""
    for _ in range(BEATS):
        try:
            found = find()
        except gi.repository.GLib.Error:
            found = None  # it went away while we looked
        if found:
            return found
        beats = []
        GLib.timeout_add(50, lambda: beats.append(0))  # gives None: once
        while not beats:
            GLib.MainContext.default().iteration(True)  # what is announced meanwhile
    sys.exit(f"not found: {what}")


def walk(node, depth=0):
    yield node
    if depth < 12:
        for i in range(node.get_child_count()):
            child = node.get_child_at_index(i)
            if child is not None:
                yield from walk(child, depth + 1)


def find(root, role, name=None):
    """By its name, or by the beginning of it that ends in a blank."""
    def fits(text):
        return name is None or text == name or (name.endswith(" ") and text.startswith(name))

    for node in walk(root):
        if node.get_role_name() == role and fits(node.get_name()):
            if node.get_state_set().contains(Atspi.StateType.SHOWING):
                return node
    return None


def press(root, name, role="push button"):
    button = wait_for(f"{role} {name}", lambda: find(root, role, name))
    Atspi.Action.do_action(button, 0)


class Events:
    """The names of those whose events of one kind came."""

    def __init__(self, event):
        self.names = []
        self.listener = Atspi.EventListener.new(self.note)
        self.listener.register(event)

    def note(self, event):
        self.names.append(event.source.get_name())

    def wait_for(self, name):
        wait_for(f"event of {name}", lambda: any(n.startswith(name) for n in self.names))


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


def write_board(folder):
    """A configuration file that has the tab of a chip with a panel."""
    name = os.path.join(folder, "board.spi")
    with open(name, "w", encoding="ascii", newline="\r\n") as file:
        file.write('"Bitlux Configuration File (Version 3.x.x)","Verification Line"\n'
                   '"[Enable72518]",1\n"[ApplyNow]",""\n')
    return name


def light_a_bit(app, window):
    checked = Events("object:state-changed:checked")
    press(window, "SBC ZT7251x Family", "page tab")
    press(window, "Open ZT7251x Panel")
    bit = wait_for("bit", lambda: find(app, "check box", "bit 7 "))
    assert not bit.get_state_set().contains(Atspi.StateType.CHECKED)
    Atspi.Action.do_action(bit, 0)
    checked.wait_for("bit 7 ")
    assert bit.get_state_set().contains(Atspi.StateType.CHECKED)


def main(program):
    server = start_display()
    folder = tempfile.TemporaryDirectory()
    process = subprocess.Popen([program, write_board(folder.name)])
    try:
        selected = Events("object:state-changed:selected")
        app = wait_for("application", lambda: application("Bitlux Forge"))
        window = wait_for("window", lambda: find(app, "frame"))
        entry = wait_for("entry", lambda: find(window, "text", "Word to Send (DI):"))
        Atspi.EditableText.set_text_contents(entry, "a5")
        press(window, "Send Once")
        wait_for("answer A5", lambda: find(window, "label", "A5"))
        expected = ["SPI Word Sent:", "  A5", "SPI Word Received:", "  A5", " "]
        # The entry is padded and kept as typed; the log shows upper case.
        wait_for(f"log {expected}", lambda: log_lines(window) == expected)
        selected.wait_for(expected[-1])

        press(window, "Send Continuously")
        note = ["Continuous Send Log Suspended", " "]
        wait_for(f"log ends with {note}", lambda: log_lines(window)[-2:] == note)
        press(window, "Stop")
        wait_for("idle buttons", lambda: find(window, "push button", "Send Continuously"))
        light_a_bit(app, window)
        assert process.poll() is None
    finally:
        for child in (process, server):
            child.kill()  # a program with changes would ask what is to become of them
            child.wait(timeout=10)
    print("journey done")


main(sys.argv[1])
