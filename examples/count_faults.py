#!/usr/bin/python3
"""Plays a Batch again and again while the dongle misbehaves, and counts what goes wrong.

Usage: count_faults.py [TIMES [FAULT ...]], as count_faults.py 1000 late:700/0.01 short:5/0.02
"""

import sys

import bitlux

WORDS = {"Wake up": "A5", "Ask": "3C", "Sleep": "0F"}


def prepare(bench):
    """Keeps the words as Quick Commands, and the Batch "Cycle" of them."""
    for name, word in WORDS.items():
        bench["frmMain.txtHexWordToSend"].text = word
        bench["frmMain.cmbMasterQCList"].text = name
        bench["frmMain.cmdSaveQC"].click()
    bench["frmMain.TabStripMain"].value = 2
    available = bench["frmMain.lstCommandsAvailable"]
    for index in range(len(available.items)):
        available.list_index = index
        bench["frmMain.cmdAddMult"].click()
    bench["frmMain.cmdSaveBatch"].click()
    bench["frmSaveBatch.txtBatchName"].text = "Cycle"
    bench["frmSaveBatch.cmdSave"].click()


def run(times, faults):
    """How many runs there were without an answer, and how many words came back wrong."""
    with bitlux.Bench(device="loopback", bus="dongle") as bench:
        prepare(bench)
        bench.recording = False
        bench.bench.set_faults(faults)
        broken = wrong = 0
        sent = list(WORDS.values())[-1]
        for _ in range(times):
            bench["frmMain.cmdClearLogMult"].click()
            before = len(bench.messages)
            bench["frmMain.cmdSendOnce"].click()
            if len(bench.messages) > before:
                broken += 1
                bench.call("frmMain.Start_USB")  # looks for the dongle again
                continue
            received = int("".join(map(str, reversed(bench.session.WordReceived))), 2)
            wrong += received != int(sent, 16)
        return broken, wrong


def main():
    times = int(sys.argv[1]) if len(sys.argv) > 1 else 1000
    faults = sys.argv[2:] or ["short:5/0.01", "stalled/0.005"]
    broken, wrong = run(times, faults)
    print(f"{times} runs with {', '.join(faults)}: {broken} without an answer, {wrong} wrong")


if __name__ == "__main__":
    main()
