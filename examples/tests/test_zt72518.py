"""A ZT72518 by the names of its registers: reset values, watchdog, fields.

    pytest                                  on the virtual bench
    pytest --bitlux-hardware                on the dongle or the port of this machine
    pytest -n 3 --bitlux-serials A,B,C      on three boards at once
"""

import pytest

NORMAL = {"Mode 1": 1, "Mode 0": 1}
PERIOD_MS = 64


@pytest.fixture
def watched(chip):
    """The chip in Normal mode, with a watchdog that wants to be served every 64 ms."""
    chip["Timer 0"].write({"Select WD Timer": f"{PERIOD_MS} ms"})
    serve(chip)
    chip["Mode Read High"].wait_for(NORMAL, within=0.01)
    return chip


def serve(chip):
    """Refreshes the watchdog; the first refresh ends the initialisation."""
    chip["Watchdog Refresh"].write(0)


@pytest.mark.parametrize(
    "name", ["MUX", "Init Vreg", "Init Wdog", "Init LIN I/O", "Timer 0", "Regulator", "CAN", "I/O"]
)
def test_register_has_its_reset_value(chip, name):
    register = chip[name]
    assert register.read() == register.reset


def test_watchdog_resets_the_part_when_it_is_not_served(bench, watched):
    bench.run_for(ms=PERIOD_MS * 3 / 4)
    watched["Mode Read High"].wait_for(NORMAL, within=0)
    watched["Mode Read High"].wait_for({"Mode 1": 1, "Mode 0": 0}, within=0.1)
    assert watched["Safe RST"].read()["SPI W/D refresh fail"] == 1


def test_watchdog_is_quiet_while_it_is_served(bench, watched):
    for _ in range(10):
        bench.run_for(ms=PERIOD_MS / 2)
        serve(watched)
    watched["Mode Read High"].wait_for(NORMAL, within=0)
    assert watched["Safe RST"].read()["SPI W/D refresh fail"] == 0


@pytest.mark.parametrize("code", range(4))
@pytest.mark.parametrize(
    ("register", "field"),
    [("Init Vreg", "VDD low reset duration"), ("Init Vreg", "IO0 on time, cyclic sense"),
     ("CAN", "Slew rate"), ("Regulator", "5V-CAN")],
)
def test_field_takes_each_value(chip, register, field, code):
    before = chip[register].read()
    written = chip[register].write({field: code}, verify=True)
    assert {**before.fields, field: code} == written.fields


@pytest.mark.hardware
def test_supplies_are_within_their_limits(chip):
    assert chip["Reg High"].read() == 0
