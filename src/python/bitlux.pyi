# What editors know of the module; its descriptions are those of the module itself (document_stub.py).

from types import TracebackType
from os import PathLike
from typing import Any, Callable, Dict, Iterable, List, Literal, NamedTuple, Optional, Sequence, Tuple, Type, Union

Value = Union[None, bool, int, float, str]
Button = Literal["OK", "Cancel", "Yes", "No"]
Access = Union[Tuple[Literal["W", "R"], int, int], Tuple[Literal["OUT", "IN"], bytes]]

__version__: str

class Failure(RuntimeError): ...

class LinkFailed(Failure):
    answers: List[int]

class PortUnusable(Failure):
    answers: List[int]

class FileFailure(Failure): ...

class Mismatch(Failure):
    differences: List["Difference"]

class Unreachable(RuntimeError): ...
class UnansweredBox(RuntimeError): ...
class UnknownName(KeyError, AttributeError): ...

class Control:
    @property
    def name(self) -> str: ...
    @property
    def kind(self) -> str: ...
    @property
    def caption(self) -> Optional[str]: ...
    text: Optional[str]
    value: Union[None, bool, int]
    list_index: Optional[int]
    @property
    def items(self) -> Optional[List[str]]: ...
    @property
    def visible(self) -> bool: ...
    @property
    def enabled(self) -> bool: ...
    @property
    def tooltip(self) -> str: ...
    @property
    def back_color(self) -> int: ...
    @property
    def marked(self) -> bool: ...
    def click(self) -> None: ...
    def double_click(self) -> None: ...
    def focus(self) -> None: ...
    def key(self, name: str) -> None: ...
    def type(self, text: str) -> None: ...
    def drag(self, value: int) -> None: ...
    def drag_line(self, source: int, target: int) -> None: ...

class Message:
    @property
    def text(self) -> str: ...
    @property
    def title(self) -> str: ...
    @property
    def place(self) -> str: ...
    @property
    def buttons(self) -> Tuple[str, ...]: ...
    @property
    def icon(self) -> Optional[str]: ...
    @property
    def answer(self) -> Optional[str]: ...

class FileDialog:
    @property
    def kind(self) -> str: ...
    @property
    def title(self) -> str: ...
    @property
    def filter(self) -> str: ...
    @property
    def file_name(self) -> str: ...
    @property
    def answer(self) -> Optional[str]: ...

class VirtualBench:
    device: str
    replies: List[int]
    command_replies: List[bytes]
    silent: bool
    late_ms: float
    def set_faults(self, faults: Sequence[str], seed: int = 1) -> None: ...
    def set_lines(self, interrupt: bool = False, reset: bool = False) -> None: ...
    def plug(self) -> None: ...
    def unplug(self) -> None: ...
    def plug_adapter(self) -> None: ...
    def unplug_adapter(self) -> None: ...
    @property
    def adapter_plugged(self) -> bool: ...
    @property
    def plugged(self) -> bool: ...
    @property
    def pins(self) -> Dict[str, int]: ...

class Session:
    BuildNumber: int
    SPIWordLength: int
    SavedSPIWordLength: int
    MaxSPIBits: int
    SPIType: int
    SavedSPIType: int
    SPITypeTab: int
    MSBFirst: int
    DisplayHex: int
    CSAssertLevel: int
    CSIdleLevel: int
    DIOneLevel: int
    DIZeroLevel: int
    ClockHighLevel: int
    ClockLowLevel: int
    DOHighValue: int
    DOLowValue: int
    ParallelPortReady: bool
    LPTPortAddress: int
    LPTPortAddresses: List[int]
    AdapterInUse: str
    AdapterClock: int
    DIPin: int
    CSPin: int
    ClockPin: int
    DOPin: int
    @property
    def DataPortPins(self) -> List[Tuple[int, str]]: ...
    @property
    def ControlPortPins(self) -> List[Tuple[int, str]]: ...
    USBReady: bool
    USBReadDone: bool
    SPIBaudRate: int
    USBPinUpdate: int
    USBExtraPins0: int
    USBExtraPins1: int
    USBFrameTopBit: bool
    FirmwareUpdateRequest: bool
    InterruptSeen: bool
    ResetSeen: bool
    ZT72518PanelActive: int
    ZT72516PanelActive: int
    ZT72361PanelActive: int
    ZT72537PanelActive: int
    ZT72361Data: int
    ZT72537FrameByte7: int
    ZT72518WordHigh: int
    ZT72518WordLow: int
    ZT72518ReplyHigh: int
    ZT72518ReplyLow: int
    WdConfigRequest: bool
    WdSequenceRequest: bool
    WdSequenceMode: int
    WdSequenceTime: int
    WdCurrentOn: bool
    WdStopRequest: bool
    ZT72516WatchdogStart: bool
    PSPIMode: int
    PSPIModeChange: bool
    PSPIReply: int
    LinkFailed: bool
    WordToSend: List[int]
    WordReceived: List[int]
    WordAnswered: bool
    PortStatusSamples: List[int]
    SingleWordBits: List[int]
    @property
    def QuickCommandTable(self) -> List[Tuple[str, List[int]]]: ...
    QuickCommandTableEmpty: int
    StopSending: bool
    @property
    def lstBatchList(self) -> List[List[str]]: ...
    SessionLogEnabled: int
    SessionLogCapacity: int
    ContinuousLogEnabled: int
    ContinuousLogLimit: int
    ContinuousLogCount: int
    SessionLogCount: int
    LogFileName: str
    ActiveMainTab: int
    ConfigTab: int
    LogPinsTab: int
    LogPinsNowTab: int
    @property
    def PartTabs(self) -> List[Dict[str, Any]]: ...
    @property
    def UserChips(self) -> List[str]: ...
    PartName: str
    ConfigFileName: str
    CommandLine: str
    OpenFromCommandLine: bool
    ConfigDirty: int
    StartingUp: int
    MainTab: int
    SavedPartName: str
    SavedWordLengthText: str
    SavedCSText: str
    SavedDIText: str
    SavedDOText: str
    SavedCLKText: str
    SavedCSnegative: bool
    SavedDIpolarity_pos: bool
    SavedDOpolarity_pos: bool
    SavedSPITypeCaption: str
    SavedBinary: bool
    SavedMSBfirst: bool
    SavedLogOff: bool
    SavedLogForever: bool
    SavedLogFixed: bool
    SavedDataPinEnable: List[int]
    SavedDataPinName: List[str]
    SavedDataPinIndex: List[int]
    SavedControlPinEnable: List[int]
    SavedControlPinName: List[str]
    SavedControlPinIndex: List[int]
    SavedHardCode3BC: int
    SavedHardCode378: int
    SavedHardCode278: int
    SavedPortListIndex: int
    SavedPortIndex: int
    @property
    def BatchCount(self) -> int: ...

class RegisterValue(int):
    @property
    def name(self) -> str: ...
    @property
    def hex(self) -> str: ...
    @property
    def fields(self) -> Dict[str, int]: ...
    @property
    def texts(self) -> Dict[str, str]: ...
    def __getitem__(self, field: str) -> int: ...

class Difference(NamedTuple):
    name: str
    before: Optional[RegisterValue]
    after: Optional[RegisterValue]
    @property
    def fields(self) -> Dict[str, Tuple[Optional[int], Optional[int]]]: ...

class SentWord(NamedTuple):
    word: int
    answer: Optional[int]
    bits: int
    at_ms: float

class DecodedWord(NamedTuple):
    kind: Literal["write", "read", "command", "unknown"]
    name: str
    value: Optional[RegisterValue]
    status: str
    text: str

class Register:
    @property
    def name(self) -> str: ...
    @property
    def address(self) -> int: ...
    @property
    def bits(self) -> int: ...
    @property
    def reset(self) -> RegisterValue: ...
    @property
    def access(self) -> str: ...
    @property
    def fields(self) -> List[str]: ...
    def read(self) -> RegisterValue: ...
    def wait_for(
        self,
        value: Union[None, int, Dict[str, Union[int, str]]] = None,
        *,
        within: float = 1.0,
        **fields: Union[int, str],
    ) -> RegisterValue: ...
    def write(
        self,
        value: Union[None, int, Dict[str, Union[int, str]]] = None,
        *,
        from_reset: bool = False,
        verify: bool = False,
        **fields: Union[int, str],
    ) -> RegisterValue: ...

Snapshot = Union[Dict[str, RegisterValue], Dict[str, int], str, PathLike[str]]

class Chip:
    @property
    def name(self) -> str: ...
    @property
    def title(self) -> str: ...
    @property
    def bits(self) -> int: ...
    @property
    def names(self) -> List[str]: ...
    def __getitem__(self, name: str) -> Register: ...
    def dump(self, all: bool = False) -> Dict[str, RegisterValue]: ...
    def diff(self, before: Snapshot, after: Optional[Snapshot] = None) -> List[Difference]: ...
    def load(self, snapshot: Snapshot, verify: bool = False) -> List[str]: ...
    def save_snapshot(self, file_name: str, snapshot: Snapshot) -> None: ...
    def read_snapshot(self, file_name: str) -> Dict[str, RegisterValue]: ...
    def decode(self, word: int, answer: Optional[int] = None) -> DecodedWord: ...

class Bench:
    def __init__(
        self,
        *,
        device: str = "loopback",
        bus: Optional[Literal["dongle", "port", "ftdi"]] = None,
        clock: Literal["virtual", "real"] = "virtual",
        ports: Sequence[int] = ...,
        dongle: bool = False,
        command_line: str = "",
        markers: Sequence[str] = ...,
        answers: Sequence[Button] = ...,
        bits: Optional[int] = None,
        type: Optional[int] = None,
        config: str = "",
        adapter: bool = False,
        adapter_clock: Optional[int] = None,
    ) -> None: ...
    @staticmethod
    def hardware(
        *,
        bus: Optional[Literal["dongle", "port", "ftdi"]] = None,
        port: Union[None, str, int] = None,
        serial: Optional[str] = None,
        bits: Optional[int] = None,
        type: Optional[int] = None,
        config: str = "",
        adapter_clock: Optional[int] = None,
        keep_lines: bool = False,
    ) -> "Bench": ...
    def __enter__(self) -> "Bench": ...
    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        error: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None: ...
    def __getitem__(self, name: str) -> Control: ...
    def chip(self, chip: str) -> Chip: ...
    def forms(self) -> List[str]: ...
    def controls(self, form: str) -> List[str]: ...
    def procedures(self, form: str) -> List[str]: ...
    def variables(self, form: str) -> List[str]: ...
    def show(self, form: str) -> None: ...
    def activate(self, form: str) -> None: ...
    def deactivate(self, form: str) -> None: ...
    def unload(self, form: str) -> None: ...
    def visible(self, form: str) -> bool: ...
    def call(self, procedure: str, *arguments: Value) -> Value: ...
    def get(self, name: str) -> Value: ...
    def set(self, name: str, value: Value) -> None: ...
    @property
    def session(self) -> Session: ...
    def answer(self, *answers: Button) -> None: ...
    @property
    def messages(self) -> List[Message]: ...
    def answer_file(self, *answers: Optional[str]) -> None: ...
    @property
    def file_dialogs(self) -> List[FileDialog]: ...
    def run_for(self, ms: float) -> None: ...
    @property
    def clock_ms(self) -> float: ...
    def at(self, ms: float, action: Callable[[], object]) -> None: ...
    @property
    def trace(self) -> List[Access]: ...
    @property
    def trace_dropped(self) -> int: ...
    trace_limit: int
    def clear_trace(self) -> None: ...
    def last_words(self, count: int = 20) -> List[SentWord]: ...
    recording: bool
    @property
    def bench(self) -> VirtualBench: ...
    def expect(
        self,
        word: int,
        pattern: str,
        *,
        within: float = 0.0,
        retries: int = 0,
        bits: int = 0,
        type: int = 0,
    ) -> int: ...
    def transfer(self, word: int, bits: int = 0, type: int = 0) -> int: ...
    def transfer_many(self, words: Iterable[int], bits: int = 0, type: int = 0) -> List[int]: ...
    def open(self, file_name: str) -> None: ...
    def save(self, file_name: str) -> None: ...
    def vcd(self, file_name: str) -> None: ...
    def sr(self, file_name: str) -> None: ...
    def journal(self, file_name: str) -> None: ...
    def end_journal(self) -> None: ...
    def close(self) -> None: ...
    @property
    def running(self) -> bool: ...
