"""The bench and the chip as fixtures of pytest."""

import pytest

import bitlux


@pytest.fixture
def bench():
    """A program on the virtual bench."""
    with bitlux.Bench(bus="dongle") as made:
        yield made
