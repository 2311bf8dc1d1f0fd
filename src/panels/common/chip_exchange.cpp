#include "panels/common/chip_exchange.h"

#include "platform/failure.h"

namespace bitlux {

std::uint64_t ChipExchange::operator()(std::uint64_t word) {
    if (!words_.send(word) || !session_.WordAnswered)
        throw Failure(Failure::Kind::LinkFailed,
                      "The word " + words_.text(word) + " was not answered");
    return words_.answer();
}

} // namespace bitlux
