#pragma once

namespace bitlux::test {

/// A chip of 15-bit words that nobody has seen before: what its file says is all there is.
inline constexpr const char* lampChip = R"toml(
[chip]
title = "Lamp driver"

[word]
bits = 15
type = 2
address = "13:12"
data = "11:0"
write = 0x4000

[[register]]
title = "Lamp"
address = 0
bits = ["-", "LEVEL 0", "LEVEL 1", "-", "-", "-", "-", "-", "-", "-", "-", "BLINK"]

  [[register.field]]
  title = "Brightness"
  bits = "2:1"
  texts = ["off", "dim", "half", "full"]

  [[register.field]]
  title = "Blink"
  bits = 11

[[register]]
title = "Blink"
address = 3
bits = ["PERIOD 1", "-", "-", "PERIOD 0"]

  [[register.field]]
  title = "Period"
  bits = "0,3" # the data sheet has them apart
  list = "Combo_Blink"
  prompt = "Select the period"
  texts = ["1 s", "2 s", "4 s", "8 s"]

  [[register.view]]
  one = 0xFFC0C0

[[command]]
title = "Unlock"
word = 0x1234
gives_back = { register = "Blink", inverted = "3:2", value = 0x5 }

[[register]] # no row: the choices are the value
title = "Guard"
address = 2
row = ""
width = 4
write = { reply = "Blink" }

  [[register.field]]
  title = "Kind"
  bits = 3
  texts = ["slow", "fast"]
  selected = 0

  [[register.field]]
  title = "Slow time"
  bits = "1:0"
  texts = ["1", "2", "3"]
  codes = [0, 2, 3]
  when = "Guard_Kind(0)"
  selected = 2

  [[register.field]]
  title = "Fast time"
  bits = "1:0"
  texts = ["8", "9"]
  when = "Guard_Kind(1)"
  selected = 1

  [[register.view]]
  row = "Guard_R"
  bits = ["a", "b"]

[sequence]
asks_to_save = true
boxes = 3
editor = {}
loop = { start_label = "LoopStart", stop_label = "LoopStop", picks = true }

  [sequence.stops]
  events = ["RST", "IRQ"]

[automatic_reads]
interval = 200
)toml";

} // namespace bitlux::test
