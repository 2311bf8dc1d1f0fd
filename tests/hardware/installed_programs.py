"""The programs as they are installed, as processes of their own, on emulated hardware:
installed_programs.py BITLUX BITLUX-FORGE EMULATED-MACHINE JOURNEY"""

import os
import pathlib
import pty
import signal
import subprocess
import sys
import tempfile
import unittest

BITLUX, FORGE, MACHINE, JOURNEY = sys.argv[1:]
BOARD = ('"Bitlux Configuration File (Version 3.x.x)","Verification Line"\r\n'
         '"[BinaryMode]",#FALSE#\r\n"[SerialMode]",{serial}\r\n"[ApplyNow]",""\r\n'
         '"[QuickCommand]","1 0 1 0 0 1 0 1 read"\r\n"[CommandToSend]","read"\r\n'
         '"[CommandToSend]","* Wait 2 hrs"\r\n"[CommandToSend]","read"\r\n')
A5_ON_THE_DONGLE = "08 70 00 A5 00 00 00 00"
# A byte of the data register each: idle, the word with a byte for each edge, idle at the end.
WORD_2 = "01 00 02 06 00 04 00 01 01"
WORD_A5 = "01 00 02 06 00 04 02 06 00 04 00 04 02 06 00 04 02 06 00 01 01"


def on_the_port(data):
    return ["0 " + byte for byte in data.split()]


class Programs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.settings = {"XDG_CONFIG_HOME": folder.name, "XDG_STATE_HOME": folder.name,
                         "LD_PRELOAD": f"libumockdev-preload.so.0 {MACHINE}",
                         "BITLUX_WIRE": str(self.folder / "wire")}
        numbers = self.folder / "bitlux-forge" / "dongles.conf"
        numbers.parent.mkdir()
        numbers.write_text("1234:abcd\n")

    def wire(self):
        return (self.folder / "wire").read_text().splitlines()

    def start(self, *arguments, **streams):
        return subprocess.Popen([BITLUX, *arguments], env={**os.environ, **self.settings},
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                                **streams)

    def test_send_on_every_bus(self):
        for arguments, output, wire in (
                (["--bits", "16", "A5C3", "1"], "A5C3 A5C3\n0001 0001\n",
                 ["10 70 00 A5 C3 00 00 00", "10 70 00 00 01 00 00 00"]),
                (["--bus", "port", "--bits", "2", "2"], "2 0\n",
                 on_the_port(WORD_2)),
                (["--bus", "ftdi:A50285BI", "--bits", "2", "2"], "2 0\n",
                 ["D 08", "D 08", "D 08", "D 00 02 03 00 01 00 08", "D 08"])):
            process = self.start("send", *arguments)
            self.assertEqual((process.communicate()[0], process.returncode), (output, 0))
            self.assertEqual(self.wire(), wire)

    def test_end_orderly_at_a_signal_in_a_wait(self):
        for serial, number, wire in ((1, signal.SIGINT, [A5_ON_THE_DONGLE]),
                                     (0, signal.SIGTERM, on_the_port(WORD_A5))):
            file = self.folder / "board.spi"
            file.write_text(BOARD.format(serial=serial), newline="")
            terminal, line = pty.openpty()
            process = self.start("run", str(file), stderr=line)
            os.close(line)
            seen = b""
            while b", waits " not in seen:
                seen += os.read(terminal, 1000)
            process.send_signal(number)
            self.assertEqual(process.communicate()[0], "A5 A5\n" if serial else "A5 00\n")
            self.assertEqual(process.returncode, 128 + number)
            self.assertEqual(self.wire(), wire)
            os.close(terminal)

    def test_show_the_window_on_the_dongle(self):
        program = self.folder / "program"
        settings = " ".join(f"{name}='{value}'" for name, value in self.settings.items())
        program.write_text(f"""#!/bin/sh
sed -i 's/"\\[ApplyNow/"[BinaryMode]",#FALSE#\\r\\n&/' "$1" # which the virtual bench has set
exec env {settings} '{FORGE}' "$@"
""")
        program.chmod(0o755)
        subprocess.run([sys.executable, JOURNEY, str(program)], check=True)
        self.assertEqual(set(self.wire()), {A5_ON_THE_DONGLE})


unittest.main(argv=sys.argv[:1])
