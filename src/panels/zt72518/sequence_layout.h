#pragma once

#include "panels/common/sequence_lists.h"

#include <array>
#include <cstdint>

namespace bitlux::zt72518 {

/// The columns of answers: of the high and of the low byte.
enum AnswerColumn : std::uint8_t { HighByte, LowByte };

inline constexpr std::array<SequenceLayout::Column, 2> answerColumns{
    {{"List_Val_read1", "MSB in binary (hexa)"}, {"List_Val_read0", "LSB in binary (hexa)"}}};

inline constexpr SequenceLayout sequenceLayout{
    .valueHeader = "Value in Hexa", .answers = answerColumns, .numbers = 42};

} // namespace bitlux::zt72518
