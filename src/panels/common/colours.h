#pragma once

#include "platform/forms/controls.h"

/// Rows of labels as the store of a byte: a label in a lit colour is a one.
namespace bitlux {

inline constexpr forms::Color litColour = 0xFFFFC0;
inline constexpr forms::Color stripedLitColour = 0xFFC0C0; ///< of every other read row

/// Of what wants to be seen: the watchdog is on, or the next click goes here.
inline constexpr forms::Color alarmColour = 255;

inline void light(forms::Label& label, bool on, forms::Color colour) {
    label.setBackColor(on ? colour : forms::windowColor);
}

} // namespace bitlux
