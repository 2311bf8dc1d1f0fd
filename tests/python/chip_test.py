"""The registers of a chip by name, as a script uses them."""

import os
import tempfile
import unittest

import bitlux


class Registers(unittest.TestCase):
    def setUp(self):
        self.bench = bitlux.Bench(device="zt72516", bus="dongle")
        self.chip = self.bench.chip("zt72516")

    def frames_out(self):
        frames = [frame.hex() for kind, frame in self.bench.trace if kind == "OUT"]
        self.bench.clear_trace()
        return frames

    def test_a_value_is_an_int_with_fields(self):
        value = self.chip["init"].read()
        self.assertEqual((value, f"{value:X}", value + 1), (0x10, "10", 0x11))
        self.assertEqual((value.name, value.hex), ("INIT", "000010"))
        self.assertEqual((value["vddrstd"], value.texts["VDDrstD"]), (2, "10ms [Default]"))
        self.assertIn("INIT = 0x000010\n    [23] LPM w RND = 0\n", repr(value))
        with self.assertRaisesRegex(KeyError, "WD_spi"):
            value["WDspi"]

    def test_a_write_changes_fields_and_keeps_the_others(self):
        self.chip["INIT"].write(WD_spi=1)
        self.assertEqual(self.frames_out(), ["2070000300000000", "2070004300021000"])
        written = self.chip["INIT"].write({"VAUX 3/5": "VAUX = 5V"}, verify=True)
        self.assertEqual(written, 0x214)
        self.assertEqual(len(self.frames_out()), 3)
        self.chip["INIT"].write(0x10)
        self.assertEqual(self.frames_out(), ["2070004300001000"])
        self.assertEqual((self.bench.session.SPIWordLength, self.bench.session.SPIType), (8, 1))

    def test_what_is_impossible_is_reported_before_a_word_is_sent(self):
        init = self.chip["INIT"]
        wrong = (
            (KeyError, lambda: self.chip["INTI"]),
            (KeyError, lambda: init.write(WD_spy=1)),
            (ValueError, lambda: init.write(WD_spi=4)),
            (ValueError, lambda: init.write(WD_spi="never")),
            (ValueError, lambda: init.write(-1)),
            (ValueError, lambda: init.write(1 << 24)),
            (ValueError, lambda: init.write()),
            (ValueError, lambda: init.write(1, WD_spi=1)),
            (TypeError, lambda: init.write(1.5)),
            (bitlux.Failure, lambda: self.chip["Mode Flags"].write(1)),
            (ValueError, lambda: self.chip.load({"INTI": 1})),
            (ValueError, lambda: self.chip.decode(1 << 32)),
            (bitlux.FileFailure, lambda: self.chip.load("none.toml")),
            (bitlux.Failure, lambda: self.bench.chip("zt7251")),
        )
        for error, action in wrong:
            with self.assertRaises(error):
                action()
        self.assertEqual(self.frames_out(), [])
        self.bench.bench.unplug()
        with self.assertRaisesRegex(bitlux.LinkFailed, "USB cable"):
            init.read()

    def test_snapshots_compare_and_restore(self):
        before = self.chip.dump()
        self.chip["SGFS"].write(SG0=1, SG3=1)
        (found,) = self.chip.diff(before)
        self.assertEqual(str(found), "SGFS 0x0000 -> 0x0009: SG3 0 -> 1, SG0 0 -> 1")
        self.assertEqual(found.fields, {"SG3": (0, 1), "SG0": (0, 1)})
        with tempfile.TemporaryDirectory() as folder:
            name = os.path.join(folder, "after.toml")
            self.chip.save_snapshot(name, self.chip.dump())
            self.assertEqual(self.chip.load(before, verify=True), ["SGFS"])
            self.assertEqual(self.chip.diff(before), [])
            self.assertEqual(self.chip.load(name), ["SGFS"])
            self.assertEqual(self.chip.read_snapshot(name)["SGFS"], 9)
        deaf = bitlux.Bench(device="stuck-low", bus="port").chip("zt72516")
        with self.assertRaisesRegex(bitlux.Mismatch, "SGFS 0x0009 -> 0x0000") as raised:
            deaf.load({"SGFS": 9}, verify=True)
        self.assertEqual(raised.exception.differences[0].after, 0)

    def test_a_field_is_waited_for(self):
        register = self.chip["SGFS"]
        self.bench.at(20, lambda: register.write(SG0=1))
        self.assertEqual(register.wait_for(SG0=1, SG3=0, within=0.1), 1)
        self.assertEqual(register.wait_for(1, within=0), 1)
        with self.assertRaisesRegex(bitlux.Mismatch, "^SGFS: SG3 = 0, not 1, after 0.05 s$"):
            register.wait_for({"SG3": 1}, within=0.05)
        for error, action in ((KeyError, lambda: register.wait_for(SG99=1)),
                              (ValueError, lambda: register.wait_for(1, within=-1)),
                              (ValueError, lambda: register.wait_for())):
            with self.assertRaises(error):
                action()

    def test_a_word_says_what_it_means(self):
        word = self.chip.decode(0x89000000, 0x00000008)
        self.assertEqual((word.kind, word.name, word.value), ("read", "Mode Flags", 8))
        self.assertEqual(word.text, "Mode Flags read -> FSM State 0")
        self.assertEqual(self.chip.decode(2).kind, "unknown")


if __name__ == "__main__":
    unittest.main()
