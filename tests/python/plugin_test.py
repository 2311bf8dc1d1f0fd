"""The plugin of pytest as a project meets it: outcomes, reports, several boards."""

from pathlib import Path

import pytest

pytest_plugins = ["pytester"]

CHIP = ("--bitlux-chip", "zt72518", "--bitlux-device", "zt72518d")

# Simulates boards: dongles with serial numbers. A process keeps those that it has opened.
BOARDS = """
    import fcntl, os
    import bitlux

    held = {}

    def hardware(*, serial, **others):
        if serial not in held:
            held[serial] = open(f"dongle-{serial}.lock", "a")
            fcntl.flock(held[serial], fcntl.LOCK_EX | fcntl.LOCK_NB)
        with open("opened", "a") as opened:
            print(os.getpid(), serial, file=opened)
        return bitlux.Bench(bus="dongle")

    bitlux.Bench.hardware = staticmethod(hardware)
"""


@pytest.fixture
def run(pytester, monkeypatch):
    """Runs pytest in a folder of its own; every warning is an error."""
    monkeypatch.setenv("XDG_RUNTIME_DIR", str(pytester.path))

    def run_with(*options):
        return pytester.runpytest_subprocess("-W", "error", "--strict-markers", "-rs", *options)

    return run_with


def test_the_virtual_bench_is_the_default(pytester, run):
    pytester.makepyfile("""
        import pytest

        def test_word(bench):
            assert bench.transfer(0xA5) == 0xA5

        @pytest.mark.hardware
        def test_board(bench):
            assert False
    """)
    result = run()
    result.assert_outcomes(passed=1, skipped=1)
    result.stdout.fnmatch_lines(
        ["SKIPPED [[]1] *: needs the real chip, and this is the virtual bench: --bitlux-hardware"]
    )
    assert "bitlux:" not in result.stdout.str()  # a project that says nothing of it


def test_a_failure_has_the_last_words_and_the_waveform(pytester, run):
    pytester.makepyfile("""
        def test_register(chip, bench):
            for value in range(30):
                chip["RAM A"].write(value)
            bench.transfer(0x5A, bits=8)
            assert chip["RAM A"].read() == 0x1C

        def test_nothing_sent(bench):
            assert False
    """)
    result = run(*CHIP, "--bitlux-artifacts", "kept")
    result.assert_outcomes(failed=2)
    (waveform,) = Path("kept").glob("*/waveform.vcd")
    assert "$enddefinitions" in waveform.read_text()
    text = result.stdout.str()
    assert text.count("bitlux: last") == 1
    assert text.count(" -> ") == 20 + 1  # words, one of them with the fields of its answer
    result.stdout.fnmatch_lines([
        "bitlux: virtual bench with zt72518d",
        "E  *assert RAM A 0x1D == 0x1C",
        "E  *bits that differ: 0x01",
        "E  *[[]0] RAM 0 = 1",
        "*- bitlux: last 20 words -*",
        "      24.192 ms  420C -> 0000  RAM A write: RAM 3, RAM 2",
        "      60.480 ms  5A -> 00",
        "      62.488 ms  0300 -> 041D  RAM A read -> RAM 4, RAM 3, RAM 2, RAM 0; status: I/O_G",
        f"waveform: {waveform}",
        f"journal: {waveform.with_name('journal.jsonl')}",
    ])
    assert waveform.with_name("journal.jsonl").read_text().count('"kind":"word"') == 32


def test_an_ini_file_names_chip_and_settings_from_its_own_folder(pytester, run):
    pytester.makeini("""
        [pytest]
        bitlux_chip = zt72516
        bitlux_config = rig/board.spi
    """)
    pytester.mkdir("rig")
    pytester.makepyfile(make="""
        import bitlux
        bitlux.Bench(bus="port", bits=12, type=3).save("rig/board.spi")
    """)
    assert pytester.runpython("make.py").ret == 0
    pytester.mkpydir("deep").joinpath("test_it.py").write_text(
        "def test_it(bench, chip):\n"
        "    assert (bench.session.SPIWordLength, bench.session.SPIType) == (12, 3)\n"
        "    assert bench.trace == [] and bench.transfer(1) is not None\n"
        "    assert bench.trace[0][0] == 'W' and chip.name == 'zt72516'\n"
        "    assert chip['INIT'].read() == 0x10\n"
    )
    run("deep").assert_outcomes(passed=1)


@pytest.mark.parametrize(
    ("options", "text"),
    [
        ("--bitlux-port lpt2 --bitlux-serial A",
         "--bitlux-serial and --bitlux-port exclude each other"),
        ("--bitlux-serials A,B,A", "--bitlux-serials names a dongle twice"),
        ("--bitlux-hardware --bitlux-device echo", "--bitlux-device is of no use on hardware"),
        ("--bitlux-bus usb", "--bitlux-bus is dongle, port or ftdi"),
        ("-n 3 --bitlux-serials A,B", "3 workers need 3 dongles: --bitlux-serials names 2"),
        ("-n 2 --bitlux-hardware", "2 workers need 2 dongles: --bitlux-serials names 0"),
    ],
)
def test_options_that_contradict_each_other_are_refused(pytester, run, options, text):
    pytester.makepyfile("def test_none(bench): pass")
    result = run(*options.split())
    assert result.ret == pytest.ExitCode.USAGE_ERROR
    result.stderr.fnmatch_lines([f"ERROR: {text}"])


@pytest.mark.parametrize(
    ("options", "text"),
    [
        (("--bitlux-chip", "zt72518"), 'There is no device "zt72518". Did you mean zt72518*?'),
        (("--bitlux-config", "none.spi"), "*none.spi*"),
        ((), "Which chip? --bitlux-chip NAME, or bitlux_chip in pytest.ini"),
    ],
)
def test_what_a_bench_cannot_start_with_is_reported_in_a_line(pytester, run, options, text):
    pytester.makepyfile("def test_none(chip): pass")
    result = run(*options)
    result.assert_outcomes(errors=1)
    result.stdout.fnmatch_lines(
        ["*ERROR at setup of test_none*", text, "*= 1 error in *"], consecutive=True
    )


def opened_by_process():
    """The serial numbers that each process has opened."""
    opened = {}
    for line in Path("opened").read_text().splitlines():
        process, serial = line.split()
        opened.setdefault(process, set()).add(serial)
    return list(opened.values())


def test_each_worker_has_a_dongle_of_its_own(pytester, run):
    pytester.makeconftest(BOARDS)
    pytester.makepyfile("""
        import pytest

        @pytest.mark.parametrize("number", range(30))
        def test_word(bench, number):
            assert bench.transfer(number) == number

        @pytest.mark.hardware
        def test_board(bench):
            pass
    """)
    result = run("-n", "3", "--bitlux-serials", "A,B,C")
    result.assert_outcomes(passed=31)
    result.stdout.fnmatch_lines(["bitlux: hardware (A,B,C)"])
    assert sorted(opened_by_process(), key=min) == [{"A"}, {"B"}, {"C"}]


def test_the_worker_after_a_crash_takes_over_the_dongle(pytester, run):
    pytester.makeconftest(BOARDS)
    pytester.makepyfile("""
        import os

        def test_crash(bench):
            os._exit(1)

        def test_word(bench):
            assert bench.transfer(1) == 1
    """)
    run("-n", "1", "--bitlux-serial", "A").assert_outcomes(passed=1, failed=1)
    assert opened_by_process() == [{"A"}, {"A"}]


def test_two_runs_never_share_a_dongle(pytester, run):
    pytester.makeconftest(BOARDS)
    pytester.makepyfile("""
        import os, subprocess, sys

        def run_word(serial):
            command = [sys.executable, "-m", "pytest", "--bitlux-serial", serial, "-k", "word"]
            return subprocess.run(command, text=True, stdout=subprocess.PIPE).stdout

        def test_before(bench):
            pass

        def test_between():
            expected = f"Another run of tests, process {os.getpid()}, uses the dongle A"
            assert expected in run_word("A")
            assert "1 passed" in run_word("B")

        def test_word(bench):
            pass
    """)
    run("--bitlux-serial", "A").assert_outcomes(passed=3)
    run("--bitlux-serial", "A", "-k", "word").assert_outcomes(passed=1)
