"""What a word costs more when a script sends it than when the program itself does.

Both send words of 32 bits on the virtual port, through the single-word page.
"""

import statistics
import sys
import time

import bitlux

LIMIT = 20  # microseconds
WORDS = 2000
ROUNDS = 9


def ready():
    bench = bitlux.Bench(device="loopback", bus="port")
    bench["frmConfigureSPI.cmbSPIWordLength"].text = "32"
    bench["frmConfigureSPI.chkEnableLog"].value = 0
    bench["frmConfigureSPI.cmdApply"].click()
    bench.recording = False
    bench["frmMain.txtHexWordToSend"].text = "DEADBEEF"
    return bench


def by_itself(bench):
    """Microseconds of a word of a continuous run."""
    start = bench.clock_ms
    bench["frmMain.cmdSendOnce"].click()
    word = bench.clock_ms - start
    bench.at(WORDS * word, bench["frmMain.cmdStopContinuous"].click)
    begin = time.perf_counter()
    bench["frmMain.cmdSendContinuous"].click()
    return (time.perf_counter() - begin) / WORDS * 1e6


def by_script(bench):
    """Microseconds of a word that is typed, sent and read by the names of the controls."""
    begin = time.perf_counter()
    for n in range(WORDS):
        bench["frmMain.txtHexWordToSend"].text = f"{n:08X}"
        bench["frmMain.cmdSendOnce"].click()
        if bench["frmMain.lblHexWordReceived"].caption != f"{n:08X}":
            sys.exit("python: a word came back wrong")
    return (time.perf_counter() - begin) / WORDS * 1e6


def by_the_short_road(bench):
    begin = time.perf_counter()
    for n in range(WORDS):
        bench.transfer(n)
    return (time.perf_counter() - begin) / WORDS * 1e6


def main():
    bench = ready()
    own, script, short = (
        statistics.median(column)
        for column in zip(*((by_itself(bench), by_script(bench), by_the_short_road(bench))
                            for _ in range(ROUNDS))))
    print(f"python: a word takes {own:.1f} us by itself, {script:.1f} us through the controls, "
          f"{short:.1f} us by transfer (limit {LIMIT} us more)")
    sys.exit(max(script, short) - own > LIMIT)


if __name__ == "__main__":
    main()
