"""Values that the module returns. It is executed in the module, with field_name from C++."""

from typing import NamedTuple, Optional


class RegisterValue(int):
    """The value of a register: an int with fields. value["WD_spi"] is the number of a field;
    its name counts without case, and blanks and underscores count alike. repr and str show all
    fields with their texts."""

    def __new__(cls, value, name="", digits=1, fields=()):
        self = super().__new__(cls, value)
        self._name = name
        self._digits = digits
        self._fields = {field: (code, text, bits) for field, code, text, bits in fields}
        return self

    @property
    def name(self):
        """The name of the register."""
        return self._name

    @property
    def hex(self):
        """The value in hexadecimal with as many digits as the register has, without 0x."""
        return f"{int(self):0{self._digits}X}"

    @property
    def fields(self):
        """The numbers of the fields that count in this value, by name."""
        return {field: code for field, (code, _, _) in self._fields.items()}

    @property
    def texts(self):
        """The texts of the same fields; the number where a value has none."""
        return {field: text or str(code) for field, (code, text, _) in self._fields.items()}

    def __getitem__(self, field):
        return self._fields[field_name(self.name, list(self._fields), field)][0]

    def __repr__(self):
        lines = [f"{self.name} = 0x{self.hex}"]
        for field, (code, text, bits) in self._fields.items():
            lines.append(f"    [{bits}] {field} = {code}" + (f"  {text}" if text else ""))
        return "\n".join(lines)


class Difference(NamedTuple):
    """A register that two snapshots do not have alike; None where one lacks it."""

    name: str
    before: Optional[RegisterValue]
    after: Optional[RegisterValue]

    @property
    def fields(self):
        """The fields that differ, by name: the numbers before and after, None where a field does
        not count."""
        before = self.before.fields if self.before is not None else {}
        after = self.after.fields if self.after is not None else {}
        return {
            field: (before.get(field), after.get(field))
            for field in {**before, **after}
            if before.get(field) != after.get(field)
        }

    def __str__(self):
        def shown(value):
            return "-" if value is None else f"0x{value.hex}"

        fields = ", ".join(f"{field} {old} -> {new}" for field, (old, new) in self.fields.items())
        line = f"{self.name} {shown(self.before)} -> {shown(self.after)}"
        return line + (f": {fields}" if fields else "")

    __repr__ = __str__


class SentWord(NamedTuple):
    """A word that went over the wire, and its answer; None when it has none, or when bits of it
    are not known. bits is the length of both, at_ms when it began, on the clock of the bench."""

    word: int
    answer: Optional[int]
    bits: int
    at_ms: float

    def __repr__(self):
        digits = (self.bits + 3) // 4
        answer = "no answer" if self.answer is None else f"{self.answer:0{digits}X}"
        return f"{self.word:0{digits}X} -> {answer}"


class DecodedWord(NamedTuple):
    """What a word means to a chip. kind is "write", "read", "command" or "unknown"; name is that
    of the register or command; value is what a write sets, or the answer to a read has; status
    names the status bits that are set in the answer; text says it in a line."""

    kind: str
    name: str
    value: Optional[RegisterValue]
    status: str
    text: str

    def __repr__(self):
        return f"{self.kind} {self.text}"
