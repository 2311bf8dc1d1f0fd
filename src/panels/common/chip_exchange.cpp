#include "panels/common/chip_exchange.h"

#include "platform/failure.h"

#include <fmt/format.h>

namespace bitlux {

ChipExchange::ChipExchange(const chips::WordFormat& format, Session& session, WordEngine& engine,
                           PinLayer& pins)
    : format_(format),
      session_(session),
      engine_(engine),
      rest_(session, pins, session.SPIType != format.type),
      type_(session.SPIType, format.type),
      length_(session.SPIWordLength, static_cast<std::int16_t>(format.bits)),
      order_(session.MSBFirst, ConstOn),
      word_(session.WordToSend, std::vector<std::int16_t>(static_cast<std::size_t>(format.bits))) {
    engine_.requireCarriedLength();
    rest_.apply();
}

ChipExchange::Rest::~Rest() {
    try {
        apply();
    } catch (const Failure&) { // the port is lost, which the next word reports
    }
}

void ChipExchange::Rest::apply() {
    if (isNeeded_ && session_.ParallelPortReady)
        pins_.rest();
}

std::uint64_t ChipExchange::operator()(std::uint64_t word) {
    const auto bits = static_cast<std::size_t>(format_.bits);
    for (std::size_t i = 0; i < bits; ++i)
        session_.WordToSend[i] = static_cast<std::int16_t>(word >> i & 1);
    engine_.SendSPI();
    if (!session_.WordAnswered)
        throw Failure(Failure::Kind::LinkFailed,
                      fmt::format("The word 0x{:X} was not answered", word));
    std::uint64_t answer = 0;
    for (std::size_t i = 0; i < bits; ++i)
        answer |= std::uint64_t{session_.WordReceived[i] == 1 ? 1U : 0U} << i;
    return answer;
}

} // namespace bitlux
