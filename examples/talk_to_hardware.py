#!/usr/bin/python3
"""Sends a few words to the chip at the dongle, or at the parallel port, of this machine.

Usage: talk_to_hardware.py [WORD ...], as talk_to_hardware.py 80 00
"""

import sys

import bitlux


def connect(bench):
    """Makes the program ready on what is there; the name of the bus, or None."""
    form = "frmConfigureSPI."
    bench[form + "optHex"].click()
    if bench.session.USBReady:
        bus = "dongle"
    else:
        bench[form + "Btn_ParallelPort"].click()
        if not bench.session.ParallelPortReady:
            return None
        bus = "parallel port"
    bench[form + "cmdApply"].click()
    return bus


def main():
    words = sys.argv[1:] or ["00", "FF", "A5"]
    with bitlux.Bench.hardware() as bench:
        bus = connect(bench)
        if bus is None:
            print("Neither a dongle nor a parallel port can be used here.")
            print('"bitlux doctor" tells what is missing.')
            return
        print(f"On the {bus}, {bench.session.SPIWordLength} bits a word:")
        for word in words:
            bench["frmMain.txtHexWordToSend"].text = word
            messages = len(bench.messages)
            bench["frmMain.cmdSendOnce"].click()
            for message in bench.messages[messages:]:
                print(message.text)
            print(f"{word} -> {bench['frmMain.lblHexWordReceived'].caption}")


if __name__ == "__main__":
    main()
