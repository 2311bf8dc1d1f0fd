"""The bench and the chip as fixtures of pytest, on the virtual bench or on hardware."""

import dataclasses
import fcntl
import os
import re
import shutil
import tempfile
import zlib
from collections.abc import Generator, Iterator
from pathlib import Path
from typing import Any, Literal, cast, get_args
from urllib.parse import quote

import pytest

import bitlux

Bus = Literal["dongle", "port", "ftdi"]

# Those that an ini file may have as well, as bitlux_device and so on.
OPTIONS = {
    "device": "The device on the virtual bench, as 'bitlux list' prints it; else the chip",
    "bus": "dongle, port or ftdi; else that of the file, or the dongle where there is one",
    "config": "A configuration file (*.spi) with whose settings each test begins",
    "chip": "The chip of the fixture chip: a name, or a file *.toml",
}


@dataclasses.dataclass(frozen=True)
class Settings:
    """What the options of a run say."""

    hardware: bool
    device: str
    bus: Bus | None
    config: str
    chip: str
    port: str | None
    serial: str | None

    def open(self) -> bitlux.Bench:
        """A program that is ready to send."""
        if self.hardware:
            return bitlux.Bench.hardware(
                bus=self.bus, port=self.port, serial=self.serial, config=self.config
            )
        bus = self.bus if self.bus or self.config else "dongle"
        return bitlux.Bench(device=self.device, bus=bus, config=self.config)

    def board(self) -> str:
        """What of the hardware the tests use, for messages."""
        if self.serial:
            return f"the {'adapter' if self.bus == 'ftdi' else 'dongle'} {self.serial}"
        return f"the port {self.port}" if self.port else "the hardware of this machine"


@dataclasses.dataclass(frozen=True)
class Rig:
    """What a test works with, and where the files of its failure go."""

    bench: bitlux.Bench
    chip: bitlux.Chip | None
    journal: Path
    folders: pytest.TempPathFactory


SETTINGS = pytest.StashKey[Settings]()
# Serial numbers of dongles, for workers to come; an empty one means any board.
FREE_BOARDS = pytest.StashKey[list[str]]()
RIG = pytest.StashKey[Rig]()
RESERVED = pytest.StashKey[int]()


@pytest.fixture
def bench(
    request: pytest.FixtureRequest, tmp_path_factory: pytest.TempPathFactory
) -> Iterator[bitlux.Bench]:
    """The program, ready to send on the virtual bench, or on the hardware that options choose."""
    settings = request.config.stash[SETTINGS]
    if settings.hardware and RESERVED not in request.config.stash:
        reserve(request.config, settings.board())
    try:
        opened = settings.open()
        chip = opened.chip(settings.chip) if settings.chip else None
    except (bitlux.Failure, ValueError) as failure:
        raise pytest.fail.Exception(str(failure), pytrace=False) from None
    with opened, tempfile.TemporaryDirectory(prefix="bitlux-") as folder:
        journal = Path(folder, "journal.jsonl")
        opened.journal(str(journal))
        request.node.stash[RIG] = Rig(opened, chip, journal, tmp_path_factory)
        yield opened


@pytest.fixture
def chip(request: pytest.FixtureRequest, bench: bitlux.Bench) -> bitlux.Chip:
    """The chip of --bitlux-chip, with its registers by name, on the bus of the bench."""
    rig: Rig = request.node.stash[RIG]
    if rig.chip is None:
        pytest.fail("Which chip? --bitlux-chip NAME, or bitlux_chip in pytest.ini", pytrace=False)
    return rig.chip


def reserve(config: pytest.Config, board: str) -> None:
    """Keeps other runs of tests from a board until this one ends, also between two tests, when no
    process has it open. The lock is the kernel's, and goes with the process."""
    folder = os.environ.get("XDG_RUNTIME_DIR") or tempfile.gettempdir()
    file = Path(folder, f"bitlux-{os.getuid()}-{quote(board, safe='')}.lock")
    flags = os.O_RDWR | os.O_CREAT | os.O_NOFOLLOW
    descriptor = os.open(file, flags, 0o600)
    try:
        fcntl.flock(descriptor, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        owner = os.read(descriptor, 32).decode()
        os.close(descriptor)
        text = f"Another run of tests, process {owner}, uses {board}"
        raise pytest.fail.Exception(text, pytrace=False) from None
    os.ftruncate(descriptor, 0)
    os.write(descriptor, str(os.getpid()).encode())
    config.stash[RESERVED] = descriptor
    config.add_cleanup(lambda: os.close(descriptor))


def pytest_addoption(parser: pytest.Parser) -> None:
    group = parser.getgroup("bitlux", "Bitlux Forge")
    for name, text in OPTIONS.items():
        metavar = "FILE" if name == "config" else "NAME"
        group.addoption(f"--bitlux-{name}", metavar=metavar, help=text)
        parser.addini(f"bitlux_{name}", f"{text}; --bitlux-{name} counts before it")
    group.addoption("--bitlux-hardware", action="store_true",
                    help="Send on the hardware of this machine, not on the virtual bench")
    group.addoption("--bitlux-port", metavar="PORT",
                    help="Hardware: this parallel port, lpt1 to lpt3 or an address")
    group.addoption("--bitlux-serial", metavar="NUMBER",
                    help="Hardware: the dongle, or adapter, with this serial number")
    group.addoption("--bitlux-serials", metavar="A,B,...",
                    help="Hardware: a dongle, or adapter, for each worker of pytest-xdist")
    group.addoption("--bitlux-artifacts", metavar="FOLDER", type=Path,
                    help="Where the files of failed tests go; else a temporary folder")


def pytest_configure(config: pytest.Config) -> None:
    marker = "hardware: needs the real chip; skipped on the virtual bench"
    config.addinivalue_line("markers", marker)
    named = (config.getoption("bitlux_serials") or "").split(",")
    serials = [text.strip() for text in named if text.strip()]
    worker: dict[str, Any] | None = getattr(config, "workerinput", None)
    if worker is None:
        check(config, serials)
        boards = serials or [config.getoption("bitlux_serial") or ""]
    else:
        boards = [worker.get("bitlux_board", "")]
    config.stash[SETTINGS] = settings_of(config, boards[0] or None)
    config.stash[FREE_BOARDS] = boards


def check(config: pytest.Config, serials: list[str]) -> None:
    """Raises UsageError for options that contradict each other."""
    one = [name for name in ("serial", "serials", "port") if config.getoption(f"bitlux_{name}")]
    if len(one) > 1:
        raise pytest.UsageError(f"--bitlux-{one[0]} and --bitlux-{one[1]} exclude each other")
    if len(set(serials)) < len(serials):
        raise pytest.UsageError("--bitlux-serials names a dongle twice")
    if chosen(config, "bus") not in ("", *get_args(Bus)):
        raise pytest.UsageError("--bitlux-bus is dongle, port or ftdi")
    if not is_on_hardware(config):
        return
    if config.getoption("bitlux_device"):
        raise pytest.UsageError("--bitlux-device is of no use on hardware")
    workers = config.getoption("numprocesses", None) or 0
    if workers > max(len(serials), 1):
        raise pytest.UsageError(
            f"{workers} workers need {workers} dongles: --bitlux-serials names {len(serials)}"
        )


def is_on_hardware(config: pytest.Config) -> bool:
    names = ("hardware", "port", "serial", "serials")
    return any(config.getoption(f"bitlux_{name}") for name in names)


def chosen(config: pytest.Config, name: str) -> str:
    """An option, else the line of the ini file, else nothing."""
    return str(config.getoption(f"bitlux_{name}") or config.getini(f"bitlux_{name}") or "")


def chosen_file(config: pytest.Config, name: str) -> str:
    """A file. The path in an ini file begins at that file."""
    file = chosen(config, name)
    if config.getoption(f"bitlux_{name}") or not file or config.inipath is None:
        return file
    return str(config.inipath.parent / file)


def settings_of(config: pytest.Config, serial: str | None) -> Settings:
    bus = chosen(config, "bus")
    chip = chosen(config, "chip")
    if chip.endswith(".toml"):
        chip = chosen_file(config, "chip")
    return Settings(
        hardware=is_on_hardware(config),
        device=chosen(config, "device") or chip or "loopback",
        bus=cast(Bus, bus) if bus else None,
        config=chosen_file(config, "config"),
        chip=chip,
        port=config.getoption("bitlux_port"),
        serial=serial,
    )


@pytest.hookimpl(optionalhook=True)
def pytest_configure_node(node: Any) -> None:
    """Gives a worker of pytest-xdist a dongle that no other has."""
    if not is_on_hardware(node.config):
        return
    free = node.config.stash[FREE_BOARDS]
    if not free:
        raise pytest.UsageError("More workers than --bitlux-serials names dongles")
    node.workerinput["bitlux_board"] = free.pop(0)


@pytest.hookimpl(optionalhook=True)
def pytest_testnodedown(node: Any) -> None:
    """The dongle of a worker that has ended, or crashed, is free for the next."""
    if "bitlux_board" in node.workerinput:
        node.config.stash[FREE_BOARDS].append(node.workerinput["bitlux_board"])


def pytest_report_header(config: pytest.Config) -> str | None:
    settings = config.stash[SETTINGS]
    if settings.hardware:
        names = ("serials", "serial", "port", "bus")
        which = [config.getoption(f"bitlux_{name}") for name in names]
        return f"bitlux: hardware ({next(filter(None, which), 'any bus')})"
    if any(chosen(config, name) for name in OPTIONS):
        return f"bitlux: virtual bench with {settings.device}"
    return None


def pytest_collection_modifyitems(config: pytest.Config, items: list[pytest.Item]) -> None:
    if config.stash[SETTINGS].hardware:
        return
    reason = "needs the real chip, and this is the virtual bench: --bitlux-hardware"
    for item in items:
        if item.get_closest_marker("hardware"):
            item.add_marker(pytest.mark.skip(reason=reason))


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item: pytest.Item) -> Generator[None, Any, None]:
    outcome = yield
    report: pytest.TestReport = outcome.get_result()
    rig = item.stash.get(RIG, None)
    words = rig.bench.last_words() if rig is not None and report.failed else []
    if rig is None or not words:
        return
    lines = [word_line(word, rig.chip) for word in words]
    folder = folder_of(item, rig)
    try:
        lines += [f"{name}: {file}" for name, file in save_files(rig, folder)]
    except (bitlux.Failure, OSError) as failure:
        lines.append(f"The files of this test were not saved: {failure}")
    report.sections.append((f"bitlux: last {len(words)} words", "\n".join(lines)))


def pytest_assertrepr_compare(op: str, left: object, right: object) -> list[str] | None:
    """Of a register's value that is not the expected one, the bits and fields that differ."""
    value = left if isinstance(left, bitlux.RegisterValue) else right
    other = right if value is left else left
    if op != "==" or not isinstance(value, bitlux.RegisterValue) or not isinstance(other, int):
        return None
    digits = f"0{len(value.hex)}X"
    difference = value ^ other
    fields = [line.strip() for line in repr(value).splitlines()[1:] if mask_of(line) & difference]
    return [
        f"{value.name} 0x{left:{digits}} == 0x{right:{digits}}",
        f"bits that differ: 0x{difference:{digits}}",
        *fields,
    ]


def mask_of(line: str) -> int:
    """The bits of a field that a line such as "[6:5,7] NAME = 0" shows."""
    mask = 0
    for part in line[line.index("[") + 1 : line.index("]")].split(","):
        high, _, low = part.partition(":")
        for bit in range(int(low or high), int(high) + 1):
            mask |= 1 << bit
    return mask


def word_line(word: bitlux.SentWord, chip: bitlux.Chip | None) -> str:
    line = f"{word.at_ms:12.3f} ms  {word!r}"
    if chip is None or chip.bits != word.bits:
        return line
    return f"{line}  {chip.decode(word.word, word.answer).text}".rstrip()


def folder_of(item: pytest.Item, rig: Rig) -> Path:
    """A folder of its own for a test."""
    root: Path | None = item.config.getoption("bitlux_artifacts")
    name = re.sub(r"[^\w.=\[\]-]+", "_", item.nodeid)[:100]
    if root is None:
        return rig.folders.mktemp(f"bitlux-{item.name}"[:40])
    return root / f"{name}-{zlib.crc32(item.nodeid.encode()):08x}"


def save_files(rig: Rig, folder: Path) -> Iterator[tuple[str, Path]]:
    """Saves the waveform and the journal of a failed test; yields the name and file of each."""
    folder.mkdir(parents=True, exist_ok=True)
    waveform = folder / "waveform.vcd"
    rig.bench.vcd(str(waveform))
    yield "waveform", waveform
    if rig.journal.exists():  # it is gone when the end of the fixture itself has failed
        yield "journal", Path(shutil.copy(rig.journal, folder))
