#!/usr/bin/python3
"""Brings a part up by register names and prints what has changed.

Usage: bring_up.py [SERIAL], the serial number of a dongle; without it on the virtual bench
"""

import sys

import bitlux


def bring_up(bench):
    """Configures the part; returns the differences from the state before."""
    chip = bench.chip("zt72516")
    before = chip.dump()
    chip["INIT"].write({"WD_spi": 1, "VAUX 3/5": "VAUX = 5V"}, verify=True)
    chip["SGFS"].write(SG0=1, SG3=1, verify=True)
    return chip.diff(before)


def main():
    if len(sys.argv) > 1:
        bench = bitlux.Bench.hardware(serial=sys.argv[1])
    else:
        bench = bitlux.Bench(device="zt72516", bus="dongle")
    with bench:
        print(f"{'register':10}  {'field':10}  before  after")
        for register in bring_up(bench):
            for field, (before, after) in register.fields.items():
                print(f"{register.name:10}  {field:10}  {before:6}  {after:5}")


if __name__ == "__main__":
    main()
