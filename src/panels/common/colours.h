#pragma once

#include "chips/description.h"
#include "platform/forms/controls.h"

/// The colours in which labels show bits.
namespace bitlux {

/// For highlighting: the watchdog is on, or the next click goes here.
inline constexpr forms::Color alarmColour = 255;

inline void light(forms::Label& label, bool on, const chips::RowColours& colours = {}) {
    label.setBackColor(on ? colours.one : colours.zero);
}

} // namespace bitlux
