#!/usr/bin/python3
"""Sends a few words to the chip at the dongle, or at the parallel port, of this machine.

Usage: talk_to_hardware.py [WORD ...], as talk_to_hardware.py 80 00
"""

import sys

import bitlux


def main():
    words = sys.argv[1:] or ["00", "FF", "A5"]
    try:
        with bitlux.Bench.hardware() as bench:
            bus = "dongle" if bench.session.USBReady else "parallel port"
            print(f"On the {bus}, {bench.session.SPIWordLength} bits a word:")
            answers = bench.transfer_many(int(word, 16) for word in words)
            for word, answer in zip(words, answers):
                print(f"{word} -> {answer:02X}")
    except (bitlux.LinkFailed, bitlux.PortUnusable) as failure:
        print(failure)


if __name__ == "__main__":
    main()
