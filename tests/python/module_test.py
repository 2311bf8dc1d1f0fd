"""The module bitlux as a script uses it."""

import ast
import inspect
import json
import os
import pathlib
import signal
import subprocess
import tempfile
import threading
import unittest

import bitlux

ENTRY = "frmMain.txtHexWordToSend"
SEND = "frmMain.cmdSendOnce"
ANSWER = "frmMain.lblHexWordReceived"


def send(bench, word):
    bench[ENTRY].text = word
    bench[SEND].click()
    return bench[ANSWER].caption


def keep(bench, name, word):
    """Keeps a word as a Quick Command and puts it into the list of commands to send."""
    bench[ENTRY].text = word
    bench["frmMain.cmbMasterQCList"].text = name
    bench["frmMain.cmdSaveQC"].click()


class Case(unittest.TestCase):
    def refuse(self, error, *deeds, text=""):
        """Every action raises the error, whose text says so."""
        for deed in deeds:
            with self.assertRaisesRegex(error, text):
                deed()


class Words(Case):
    def test_go_through_the_forms_on_every_bus(self):
        dongle = bitlux.Bench(device="loopback", bus="dongle")
        port = bitlux.Bench(device="stuck-high", bus="port")
        self.assertEqual(send(dongle, "A5"), "A5")
        self.assertEqual(send(port, "A5"), "FF")
        frame = b"\x08\x70\x00\xa5\x00\x00\x00\x00"
        self.assertEqual(dongle.trace, [("OUT", frame), ("IN", frame)])
        self.assertEqual(port.trace[:3], [("W", 0x378, 0), ("W", 0x378, 2), ("W", 0x378, 6)])
        adapter = bitlux.Bench(device="stuck-high", bus="ftdi", adapter_clock=250_000)
        self.assertEqual(send(adapter, "A5"), "FF")
        self.assertEqual(adapter.trace, port.trace)
        session = adapter.session
        self.assertEqual((session.AdapterInUse, session.AdapterClock), ("FT232R BENCH", 250_000))
        self.assertEqual(adapter.bench.pins["driven"], 0x0B)
        adapter.bench.unplug_adapter()
        self.refuse(bitlux.PortUnusable, lambda: adapter.transfer(1), text="was removed")
        adapter.bench.plug_adapter()
        self.assertEqual(adapter.transfer(1), 0xFF)
        for arguments in ({"bus": "usb"}, {"bus": "ftdi", "adapter_clock": 0}):
            self.refuse(ValueError, lambda: bitlux.Bench(**arguments))
        self.refuse(ValueError, lambda: bitlux.Bench.hardware(keep_lines=True),
                    lambda: bitlux.Bench.hardware(bus="ftdi", port="lpt1"))
        port.clear_trace()
        self.assertEqual((port.trace, len(dongle.trace)), ([], 2))
        log = dongle["frmMain.lstSessionLogSingle"].items
        self.assertEqual(log[:2], ["SPI Word Sent:", "  A5"])

    def test_are_transferred_directly_in_any_shape(self):
        bench = bitlux.Bench(device="scripted", bus="port")
        bench.session.SPIType = 3
        word = 0x123456789ABCDEF0123456789ABCDEF012345678
        bench.bench.replies = [word, 1]
        self.assertEqual(bench.bench.replies, [word, 1])
        self.assertEqual(bench.transfer(word, bits=160, type=2), word)
        self.assertEqual(bench.transfer(0, bits=16), 1)
        self.assertEqual(bench.transfer(0, bits=16), 1)
        self.assertEqual((bench.session.SPIWordLength, bench.session.SPIType), (8, 3))
        for word, shape in ((256, {}), (-1, {}), (1 << 160, {"bits": 160}), (0, {"bits": 161}),
                            (0, {"bits": -1}), (0, {"type": 9}), (0, {"type": -1})):
            self.refuse(ValueError, lambda: bench.transfer(word, **shape))
        self.refuse(TypeError, lambda: bench.transfer(1.5))
        self.refuse(ValueError, lambda: bitlux.Bench(bus="dongle").transfer(1, bits=9),
                    text="8, 16, 24, 32 or 40 bits, not of 9")
        self.refuse(bitlux.PortUnusable, lambda: bitlux.Bench(ports=[]).transfer(1),
                    text="No device available")
        self.refuse(bitlux.Failure, lambda: setattr(bitlux.Bench().bench, "replies", [1]),
                    text="answers by itself")

    def test_go_many_at_once(self):
        bench = bitlux.Bench(device="echo", bus="dongle", bits=16, type=2)
        self.assertEqual(bench.transfer_many([1, 2, 0xFFFF]), [0, 1, 2])
        self.assertEqual(bench.transfer_many((n for n in (3, 4)), bits=24, type=1), [0xFFFF00, 3])
        self.assertEqual((bench.session.SPIWordLength, bench.session.SPIType), (16, 2))
        bench.clear_trace()
        self.refuse(ValueError, lambda: bench.transfer_many([1, 0x10000]))
        self.refuse(TypeError, lambda: bench.transfer_many([1, "2"]))
        self.assertEqual(bench.trace, [], "looked at before the first is sent")
        bench.bench.set_faults(["gone@3"])
        with self.assertRaisesRegex(bitlux.LinkFailed, "^Word 3 of 4: Check the USB") as caught:
            bench.transfer_many([5, 6, 7, 8])
        self.assertEqual(caught.exception.answers, [0, 5])

    def test_are_expected_to_be_answered(self):
        bench = bitlux.Bench(device="scripted", bus="port")
        bench.bench.replies = [0x5A, 0x5B, 0xA5]
        self.assertEqual(bench.expect(1, "5X"), 0x5A)
        self.assertEqual(bench.expect(1, "0b1XX0_0101", retries=1), 0xA5)
        with self.assertRaises(bitlux.Mismatch) as caught:
            bench.expect(1, "05/0F", retries=0, within=0)
            bench.expect(1, "55", retries=2)
        self.assertEqual(str(caught.exception), "The answer to 01 is A5, not 55, after 3 attempts\n"
                         "  10100101  answer\n  01010101  expected\n  ^^^^")
        self.assertEqual(len(bench.last_words()), 7)
        with self.assertRaisesRegex(bitlux.Mismatch, "after [0-9]{2,} attempts"):
            bench.expect(1, "55", within=0.05)
        self.assertGreaterEqual(bench.clock_ms, 50)
        self.refuse(ValueError, lambda: bench.expect(1, "123"), lambda: bench.expect(1, "5Y"),
                    lambda: bench.expect(1, "55", retries=-1),
                    lambda: bench.expect(1, "55", within=-1))

    def test_that_went_last_can_be_read(self):
        bench = bitlux.Bench(device="echo", bus="dongle", bits=16)
        self.assertEqual(bench.last_words(), [])
        bench.transfer_many([0xA5C3, 0x0FF0])
        first, last = bench.last_words()
        self.assertEqual((repr(first), last[:3]), ("A5C3 -> 0000", (0x0FF0, 0xA5C3, 16)))
        self.assertLess(first.at_ms, last.at_ms)
        self.assertEqual(bench.last_words(1), [last])
        bench.bench.set_faults(["gone@1"])
        self.refuse(bitlux.LinkFailed, lambda: bench.transfer(0x1234))
        self.assertEqual(repr(bench.last_words(1)[0]), "1234 -> no answer")
        self.refuse(ValueError, lambda: bench.last_words(-1))

    def test_can_be_typed(self):
        bench = bitlux.Bench(bus="dongle")
        entry = bench[ENTRY]
        entry.type("3cx")
        entry.key("Backspace")
        entry.key("Enter")
        self.assertEqual(bench[ANSWER].text, "3C")


class Boxes(Case):
    def test_with_a_choice_need_an_answer(self):
        bench = bitlux.Bench(bus="port")
        bench.session.ConfigDirty = 1
        with self.assertRaisesRegex(bitlux.UnansweredBox, "Save configuration before exiting"):
            bench.close()
        box = bench.messages[-1]
        self.assertEqual((box.title, box.buttons, box.icon, box.answer),
                         ("Last Chance to Save", ("Yes", "No"), "Question", None))
        self.assertTrue(bench.running)
        bench.answer("No")
        bench.close()
        self.assertEqual((bench.messages[-1].answer, bench.running), ("No", False))
        self.refuse(ValueError, lambda: bench.answer("Maybe"))

    def test_with_one_button_take_an_answer_only_by_its_name(self):
        bench = bitlux.Bench(bus="port")
        bench.answer("Cancel", "OK")
        send(bench, "xyz")
        self.assertEqual(bench.messages[-1].text, "Not a valid hex number!")
        bench["frmMain.cmdAddPause"].click()
        bench["frmMain.TabStripMain"].value = 2
        bench[SEND].click()  # asks at the pause, which takes Cancel
        self.assertEqual([box.answer for box in bench.messages], ["OK", "Cancel"])
        bench.call("frmMain.itemOpen_Click")  # says that no file was chosen
        self.refuse(bitlux.UnansweredBox, bench[SEND].click)  # the answer OK has gone there

    def test_a_failure_in_a_handler_is_raised_and_shown(self):
        bench = bitlux.Bench(bus="port")
        bench.session.SPIType = 9
        with self.assertRaisesRegex(bitlux.Failure, "^Subscript out of range: there is no SPI"):
            send(bench, "A5")
        box = bench.messages[-1]
        self.assertEqual((box.text, box.place), ("Subscript out of range: there is no SPI type 9",
                                                 "frmMain.cmdSendOnce_Click"))
        bench.session.SPIType = 1
        bench.call("frmMain.cmdCancelSingle_Click")
        self.assertEqual(send(bench, "A5"), "A5")


class Names(Case):
    def test_that_do_not_exist_raise_with_near_ones(self):
        bench = bitlux.Bench()
        for near, deed in (
            ("frmMain", lambda: bench["frmMian.cmdSendOnce"]),
            ("cmdSendOnce", lambda: bench["frmMain.cmdSendOne"]),
            ("SPIWordLength", lambda: bench.session.SPIWordLenght),
            ("SPIType", lambda: setattr(bench.session, "SPITyp", 1)),
            ("DoSPISingle", lambda: bench.call("frmMain.DoSPISingel")),
            ("", lambda: bench.get("frmMain.StoreCommands")),
            ("frmAddWait", lambda: bench.show("frmAddWiat")),
            ("Enter", lambda: bench[SEND].key("Entr")),
        ):
            self.refuse(KeyError, deed, text=near)
        self.assertFalse(hasattr(bench.session, "Nothing"))

    def test_lead_to_every_control_and_variable(self):
        bench = bitlux.Bench(bus="dongle")
        self.assertIn("frmConfigureSPI", bench.forms())
        for form in bench.forms():
            for name in bench.controls(form):
                control = bench[name]
                self.assertEqual(control.name, name)
                for part in ("caption", "text", "value", "items", "list_index", "tooltip",
                             "marked"):
                    getattr(control, part)
        for name in dir(bench.session):
            value = getattr(bench.session, name)
            try:
                setattr(bench.session, name, value)
            except AttributeError as error:
                self.assertIn("can only be read", str(error))
            self.assertEqual(getattr(bench.session, name), value, name)

    def test_of_variables_keep_their_kinds(self):
        session = bitlux.Bench(bus="port").session
        self.assertIs(session.ParallelPortReady, True)
        self.assertEqual((session.MainTab, session.ConfigDirty, session.PartName), (1, 0, "Generic"))
        session.WordToSend = [1, 0, 1]
        self.assertEqual(session.WordToSend, [1, 0, 1])
        for name, wrong, error in (("SPIWordLength", 40000, ValueError),
                                   ("SPIWordLength", "8", TypeError),
                                   ("USBReady", 1, TypeError),
                                   ("PartName", 7, TypeError),
                                   ("LPTPortAddresses", [1], ValueError),
                                   ("WordToSend", [1.5], TypeError)):
            self.refuse(error, lambda: setattr(session, name, wrong))

    def test_of_procedures_take_arguments(self):
        bench = bitlux.Bench()
        bench.call("frmMain.SetSpiWordLength", 24)
        self.assertEqual(len(bench.session.WordToSend), 24)
        for arguments in ((), (1, 2), ("24",), (100000,), (0,)):
            self.refuse(bitlux.Failure,
                        lambda: bench.call("frmMain.SetSpiWordLength", *arguments))


class Hands(Case):
    def test_do_not_reach_what_is_hidden_or_disabled(self):
        bench = bitlux.Bench()  # as it starts: in binary
        entry = bench[ENTRY]
        self.assertFalse(entry.visible)
        self.refuse(bitlux.Unreachable, lambda: setattr(entry, "text", "A5"), entry.click,
                    bench["frmMain.cmdStopContinuous"].click)
        self.assertTrue(bench["frmMain.cmdSI_single(3)"].visible)
        bench["frmMain.cmdSI_single(3)"].click()
        self.assertEqual(bench["frmMain.cmdSI_single(3)"].caption, "1")

    def test_set_what_a_control_holds(self):
        bench = bitlux.Bench(bus="port", dongle=True)
        check = bench["frmConfigureSPI.ChkSerialPort"]
        self.assertEqual(check.value, 0)
        check.value = 1
        self.assertEqual((check.value, bench.session.USBReady), (1, True))
        option = bench["frmConfigureSPI.optBinary"]
        option.value = True
        self.assertIs(bench["frmConfigureSPI.optHex"].value, False)
        self.refuse(ValueError, lambda: setattr(option, "value", False))
        bits = bench["frmConfigureSPI.cmbSPIWordLength"]
        bits.text = "12"
        self.assertEqual((bits.text, bits.list_index), ("12", -1))
        bits.list_index = 1
        self.assertEqual(bits.text, bits.items[1])
        for name, part, value in ((ANSWER, "text", "1"), (SEND, "value", 1),
                                  (SEND, "list_index", 1)):
            self.refuse(AttributeError, lambda: setattr(bench[name], part, value))

    def test_keep_a_control_whose_form_was_made_again(self):
        bench = bitlux.Bench()
        name = bench["frmSaveBatch.txtBatchName"]
        bench.show("frmSaveBatch")
        name.text = "Cycle"
        bench.unload("frmSaveBatch")
        self.assertEqual((name.text, bench.visible("frmSaveBatch")), ("", False))
        bench.unload("frmMain")
        self.assertFalse(bench.running)


class Time(Case):
    def test_passes_in_calls_that_block(self):
        bench = bitlux.Bench(bus="port")
        bench[ENTRY].text = "A5"
        seen = []
        bench.at(400, lambda: seen.append(bench.clock_ms))
        bench.at(700, bench["frmMain.cmdStopContinuous"].click)
        start = bench.clock_ms
        bench["frmMain.cmdSendContinuous"].click()
        self.assertAlmostEqual(seen[0] - start, 400, delta=1)
        self.assertAlmostEqual(bench.clock_ms - start, 700, delta=1)
        bench.run_for(250)
        self.assertAlmostEqual(bench.clock_ms - start, 950, delta=1)

    def test_may_be_real(self):
        bench = bitlux.Bench(bus="port", clock="real")
        start = bench.clock_ms
        bench.run_for(30)
        self.assertGreaterEqual(bench.clock_ms - start, 30)

    def test_what_a_script_raises_comes_back_as_it_was(self):
        bench = bitlux.Bench(bus="port")
        bench[ENTRY].text = "A5"
        error = ZeroDivisionError("of the script")

        def fail():
            raise error

        bench.at(0, fail)
        with self.assertRaises(ZeroDivisionError) as caught:
            bench["frmMain.cmdSendContinuous"].click()
        self.assertIs(caught.exception, error)
        self.assertEqual(bench.messages, [])

    def test_signals_reach_calls_that_last(self):
        def interrupted(call, begin):
            """Whether call ends when the user presses Ctrl-C, and what else was seen. Another
            process sends the signals, the second when the first was handled; begin takes what
            notifies it that the call has begun."""
            begun, seen = os.pipe(), os.pipe()
            signal.signal(signal.SIGUSR1, lambda *_: os.write(seen[1], b"x"))
            child = os.fork()
            if child == 0:
                for number, end in ((signal.SIGUSR1, begun[0]), (signal.SIGINT, seen[0])):
                    os.read(end, 1)
                    os.kill(os.getppid(), number)
                os._exit(0)
            try:
                with self.assertRaises(KeyboardInterrupt) as caught:
                    begin(lambda: os.write(begun[1], b"x"))
                    call()
            finally:
                os.waitpid(child, 0)
            return caught.exception

        sending = bitlux.Bench(bus="port")
        sending.session.SessionLogEnabled = 0
        sending[ENTRY].text = "A5"
        sending.recording = False
        interrupted(sending["frmMain.cmdSendContinuous"].click, lambda wake: sending.at(0, wake))
        waiting = bitlux.Bench(clock="real")
        interrupted(lambda: waiting.run_for(60000), lambda wake: waiting.at(0, wake))
        silent = bitlux.Bench(bus="dongle")
        silent.bench.set_faults(["silent@3"])

        def words():
            yield from (1, 2, 3)
            wake[0]()  # they are sent once all are known

        wake = []
        answers = interrupted(lambda: silent.transfer_many(words()), wake.append).answers
        self.assertEqual(answers, [1, 2][:len(answers)])

    def test_lets_another_thread_run_while_the_program_waits(self):
        bench = bitlux.Bench(bus="dongle", clock="real")
        answers = []

        def interrupt():
            answers.append(bench.transfer(0xA5))
            os.kill(os.getpid(), signal.SIGINT)

        thread = threading.Thread(target=interrupt)
        bench.at(0, thread.start)  # so that the wait has begun
        with self.assertRaises(KeyboardInterrupt):
            bench.run_for(5000)
        thread.join()
        self.assertEqual(answers, [0xA5])


class Recording(Case):
    def test_keeps_the_newest_and_counts_what_it_dropped(self):
        bench = bitlux.Bench(bus="dongle")
        self.assertEqual((bench.trace_limit, bench.trace_dropped), (100000, 0))
        bench.trace_limit = 3
        bench.transfer_many([1, 2, 3])
        frames = [b"\x08\x70\x00" + bytes([word, 0, 0, 0, 0]) for word in (2, 3)]
        self.assertEqual(bench.trace, [("IN", frames[0]), ("OUT", frames[1]), ("IN", frames[1])])
        self.assertEqual(bench.trace_dropped, 3)
        bench.trace_limit = 1
        self.assertEqual((bench.trace, bench.trace_dropped), ([("IN", frames[1])], 5))
        bench.clear_trace()
        self.assertEqual((bench.trace, bench.trace_dropped), ([], 0))
        self.refuse(ValueError, lambda: setattr(bench, "trace_limit", 0))


class Ends(Case):
    def test_leave_the_bus_alone(self):
        with bitlux.Bench(bus="port") as bench:
            send(bench, "A5")
            button = bench[SEND]
        entries = len(bench.trace)
        self.refuse(bitlux.Failure, button.click, lambda: bench.transfer(1),
                    lambda: bench.transfer_many([1]), lambda: bench[SEND],
                    lambda: bench.call("frmMain.Start_USB"), lambda: bench.show("frmAddWait"),
                    lambda: bench.run_for(1), lambda: bench.at(1, button.click),
                    lambda: bench.open("x.spi"), bench.bench.plug,
                    lambda: bench.bench.set_faults(["gone"]), lambda: bench.answer("Yes"),
                    text="^The bench is closed$")
        self.assertEqual(len(bench.trace), entries)
        self.assertEqual((bench.running, bench.messages, button.visible), (False, [], True))
        bench.close()


class Dongles(Case):
    def test_have_faults_as_set(self):
        bench = bitlux.Bench(bus="dongle")
        bench.bench.silent = True
        start = bench.clock_ms
        bench.call("frmMain.test_mode")
        self.assertAlmostEqual(bench.clock_ms - start, 500, delta=5)
        bench.bench.silent = False
        bench.bench.late_ms = 600
        start = bench.clock_ms
        self.assertEqual(bench.transfer(0xA5), 0xA5)
        self.assertGreater(bench.clock_ms - start, 600)
        bench.bench.late_ms = 0
        bench.bench.command_replies = [bytes([0, 5, 0, 1, 0, 0, 0, 0]), bytes(8)]
        lines = []
        for _ in range(3):
            bench.call("frmMain.read_rstint")
            lines.append(bench.session.InterruptSeen)
        self.assertEqual(lines, [True, False, False])
        bench.bench.unplug()
        self.refuse(bitlux.LinkFailed, lambda: bench.transfer(0xA5), text="^Check the USB cable")
        bench.bench.plug()
        bench.call("frmMain.Start_USB")
        self.assertEqual(bench.transfer(0xA5), 0xA5)
        self.assertEqual(set(bench.bench.pins),
                         {"data", "control", "data_out", "extra", "lines", "driven"})


class Files(Case):
    def test_open_and_save_configurations(self):
        with tempfile.TemporaryDirectory() as folder:
            name = os.path.join(folder, "x.spi")
            with bitlux.Bench(bus="port") as bench:
                keep(bench, "Wake up", "A5")
                bench.save(name)
                self.assertEqual(bench.session.ConfigDirty, 0)
            again = bitlux.Bench(ports=[0x378], command_line=name)
            self.assertEqual(again["frmMain.cmbMasterQCList"].items, ["Wake up"])
            other = bitlux.Bench()
            other.answer_file(name, None)
            other["frmMain.itemOpen"].click()
            self.assertEqual(other.session.QuickCommandTable[0][0], "Wake up")
            other["frmMain.itemSaveAs"].click()
            self.assertEqual([(asked.kind, asked.answer) for asked in other.file_dialogs],
                             [("Open", name), ("Save", None)])
            nowhere = os.path.join(folder, "nowhere", "y.spi")
            self.refuse(bitlux.FileFailure, lambda: other.open(os.path.join(folder, "y.spi")),
                        lambda: other.save(nowhere))
            other.session.ConfigFileName = nowhere
            self.refuse(bitlux.FileFailure, other["frmMain.itemSave"].click)  # of a handler too


    def test_choose_bus_and_words_of_a_bench(self):
        with tempfile.TemporaryDirectory() as folder:
            for made_on in ("port", "dongle"):
                name = os.path.join(folder, "board.spi")
                made = bitlux.Bench(bus=made_on, bits=24, type=3)
                keep(made, "Wake up", "00A5C3")
                made.save(name)
                for bus in (None, "port", "dongle"):
                    bench = bitlux.Bench(bus=bus, config=name)
                    self.assertEqual(bench.transfer(0xA5C3), 0xA5C3)
                    kind = bench.trace[0][0]
                    self.assertEqual(kind, "W" if (bus or made_on) == "port" else "OUT")
                    self.assertEqual((bench.session.SPIWordLength, bench.session.SPIType), (24, 3))
                    self.assertEqual(bench.session.QuickCommandTable[0][0], "Wake up")
            self.refuse(ValueError, lambda: bitlux.Bench(bus="port", bits=8, config=name))
            self.refuse(bitlux.FileFailure, lambda: bitlux.Bench(config=folder + "/none.spi"))


class Module(Case):
    def test_refuses_wrong_arguments(self):
        bench = bitlux.Bench(bus="dongle")
        for made, wrong in ((bitlux.Bench, ({"device": "nothing"}, {"bus": "usb"}, {"bits": 8},
                                            {"clock": "slow"}, {"ports": [0x10000]},
                                            {"bus": "port", "bits": 0},
                                            {"bus": "port", "type": 9})),
                            (bitlux.Bench.hardware, ({"bus": "usb"}, {"port": "lpt4"}, {"port": 0},
                                                     {"port": 1, "serial": "A1"},
                                                     {"bus": "dongle", "port": 1},
                                                     {"bus": "port", "serial": "A1"},
                                                     {"bits": 161}))):
            for arguments in wrong:
                self.refuse(ValueError, lambda: made(**arguments))
        self.refuse(ValueError, lambda: bench.run_for(-1), lambda: bench.at(float("nan"), print),
                    lambda: bench.bench.set_faults(["lost"]),
                    lambda: setattr(bench.bench, "device", "nothing"),
                    lambda: setattr(bench.bench, "late_ms", -1))
        self.refuse(bitlux.PortUnusable, lambda: bitlux.Bench(bus="port", ports=[]))

    def test_find_the_marker_files_that_a_bench_offers(self):
        for markers in ([], ["72518VBopt.txt"]):
            bench = bitlux.Bench(device="zt72518d", dongle=True, markers=markers)
            bench.show("ZT72518")
            self.assertEqual(bench["ZT72518.opt_vb(0)"].visible, bool(markers))
            self.assertFalse(bench.get("ZT72518.StoreCommands"))
            bench.call("ZT72518.Decod_Name", "MUX Write")
            self.assertEqual(bench.get("ZT72518.SequenceHighByte"), 64)

    def test_save_the_waveform_of_the_words(self):
        bench = bitlux.Bench(device="loopback", bus="port")
        send(bench, "A5")
        with tempfile.TemporaryDirectory() as folder:
            bench.vcd(folder + "/z.vcd")
            dump = pathlib.Path(folder, "z.vcd").read_text()
            with self.assertRaisesRegex(bitlux.Failure, "nowhere"):
                bench.sr(folder + "/nowhere/z.sr")
        self.assertIn("$dumpvars", dump)

    def test_record_a_journal_of_the_words(self):
        bench = bitlux.Bench(device="loopback", bus="dongle")
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder, "j.jsonl")
            bench.journal(str(file))
            send(bench, "A5")
            bench.call("frmMain.read_rstint")
            bench.end_journal()
            send(bench, "5A")
            lines = [json.loads(line) for line in file.read_text().splitlines()]
            with self.assertRaisesRegex(bitlux.FileFailure, "nowhere"):
                bench.journal(folder + "/nowhere/j.jsonl")
            bench.end_journal()
        self.assertEqual([line["kind"] for line in lines], ["journal", "word", "command"])
        self.assertEqual((lines[1]["sent"], lines[1]["received"]), ("A5", "A5"))
        self.assertEqual(lines[2]["frame"], "00 05 00 00 00 00 00 00")
        self.assertRegex(lines[2]["answer"], "^00 05 00 ")

    def test_has_a_stub_that_is_in_step_and_documentation(self):
        self.assertRegex(bitlux.__version__, r"^\d+\.\d+\.\d+$")
        stub = ast.parse(pathlib.Path(bitlux.__file__).with_name("__init__.pyi").read_text())
        classes = {node.name: node for node in stub.body if isinstance(node, ast.ClassDef)}
        real = {name: thing for name, thing in vars(bitlux).items() if isinstance(thing, type)}
        self.assertEqual(set(classes), set(real))
        for name, node in classes.items():
            stated = {part.name if isinstance(part, ast.FunctionDef) else part.target.id
                      for part in node.body if not isinstance(part, ast.Expr)}
            if name == "Session":
                self.assertEqual(stated, set(dir(bitlux.Bench().session)))
                continue
            self.assertEqual(ast.get_docstring(node), inspect.getdoc(real[name]))
            for part in stated - {"answers", "differences"}:  # which an exception has only where there are some
                self.assertTrue(hasattr(real[name], part), f"{name}.{part}")
            public = {part for part in vars(real[name]) if not part.startswith("_")}
            self.assertEqual(public - stated, set())
            for part in public:
                self.assertTrue(getattr(real[name], part).__doc__, f"{name}.{part}")

    def test_ends_with_a_bench_in_the_middle_of_things(self):
        script = ("import bitlux\n"
                  "b = bitlux.Bench(bus='dongle')\n"
                  "b.bench.silent = True\n"
                  "b.at(5, lambda: b['frmMain.cmdSendOnce'].click())\n")
        done = subprocess.run(["/usr/bin/python3", "-c", script], timeout=30, check=False,
                              env=dict(os.environ), stderr=subprocess.PIPE)
        self.assertEqual((done.returncode, done.stderr), (0, b""))


if __name__ == "__main__":
    unittest.main()
