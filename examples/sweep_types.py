#!/usr/bin/python3
"""Sends one word over all eight SPI types and prints what comes back.

Usage: sweep_types.py [WORD [BITS]], as sweep_types.py A5C3 16
"""

import sys

import bitlux


def sweep(word, bits, device):
    """The answers of types 1 to 8, and how long a word takes in microseconds."""
    with bitlux.Bench(device=device, bus="port") as bench:
        rows = []
        for spi_type in range(1, 9):
            start = bench.clock_ms
            answer = bench.transfer(word, bits=bits, type=spi_type)
            rows.append((spi_type, answer, (bench.clock_ms - start) * 1000))
        return rows


def main():
    word = int(sys.argv[1], 16) if len(sys.argv) > 1 else 0xA5C3
    bits = int(sys.argv[2]) if len(sys.argv) > 2 else 16
    digits = (bits + 3) // 4
    print(f"{word:0{digits}X}, {bits} bits, data out wired to data in")
    print("type  answer  microseconds")
    for spi_type, answer, microseconds in sweep(word, bits, "loopback"):
        note = "" if answer == word else "  a bit late, as a loop is on this type"
        print(f"{spi_type:4}  {answer:0{digits}X}  {microseconds:12.0f}{note}")


if __name__ == "__main__":
    main()
