"""The examples of docs/test-rig.md, run unchanged, one after the other."""

import re
import subprocess
from pathlib import Path

import bitlux
import pytest

PAGE = Path(__file__).parents[2] / "docs" / "test-rig.md"
INDENT = "    "
USAGE_ERRORS = {"bitlux": 2, "pytest": 4}


def blocks(text):
    """Each indented block, with the lines of text before it."""
    before, block = [], []
    for line in text.splitlines() + ["end"]:
        if line.startswith(INDENT) or (block and not line):
            block.append(line.removeprefix(INDENT))
        elif block:
            yield "\n".join(before), "\n".join(block).strip("\n")
            before, block = [line], []
        else:
            before.append(line)


def make_configuration():
    """What the page takes for granted: a file with three Quick Commands that are sent in turn."""
    with bitlux.Bench(device="zt72518d", bus="dongle", bits=16, type=2) as bench:
        bench["frmMain.TabStripMain"].value = 2
        words = {"write RAM A": "425A", "read RAM A": "0300", "read Timer 0": "1500"}
        for name, word in words.items():
            bench["frmMain.txtHexWordToSend"].text = word
            bench["frmMain.cmbMasterQCList"].text = name
            bench["frmMain.cmdSaveQC"].click()
        for index in range(3):
            bench["frmMain.lstCommandsAvailable"].list_index = index
            bench["frmMain.lstCommandsAvailable"].double_click()
        bench.save("board.spi")


def run_session(block):
    """Runs the commands of a block and compares what they print; ... matches anything."""
    code = 0
    for part in re.split(r"^\$ ", block, flags=re.M)[1:]:
        command, _, wanted = part.partition("\n")
        done = subprocess.run(["/bin/bash", "-c", f"(exit {code}); {command}"], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        code = done.returncode
        assert code != USAGE_ERRORS.get(command.split()[0]), done.stdout
        pattern = ".*".join(re.escape(piece) for piece in wanted.rstrip().split("..."))
        if re.fullmatch(pattern, done.stdout.rstrip(), re.S) is None:
            pytest.fail(f"$ {command}\n{done.stdout}", pytrace=False)


def test_examples_do_what_the_page_says(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    make_configuration()
    sessions = 0
    for before, block in blocks(PAGE.read_text()):
        names = re.findall(r"`([\w.]+\.(?:toml|py|ini))`", before)
        if block.startswith("$ "):
            run_session(block)
            sessions += 1
        else:
            Path(names[-1]).write_text(block + "\n")
    assert sessions >= 7
