#include "panels/common/table_words.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int bitsOfDigit = 4;

} // namespace

void TableWords::send(std::uint32_t word) {
    session_.WordToSend.assign(static_cast<std::size_t>(format_.bits), 0);
    for (std::size_t i = 0; i < session_.WordToSend.size(); ++i)
        session_.WordToSend[i] = static_cast<std::int16_t>(word >> i & 1);
    engine_.SendSPI();
}

void TableWords::write(const oldchips::Register& target, std::uint32_t data) {
    send(format_.writing(target.address, data));
}

std::uint32_t TableWords::read(const oldchips::Register& source, RegisterView view) {
    send(format_.reading(source.address, view == RegisterView::High));
    const std::size_t width = std::min(source.writeCaptions.size(), session_.WordReceived.size());
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width; ++i)
        value |= session_.WordReceived[i] == 1 ? 1U << i : 0U;
    return value;
}

std::string TableWords::text(std::uint32_t word) const {
    return fmt::format("0x{:0{}X}", word, (format_.bits + bitsOfDigit - 1) / bitsOfDigit);
}

std::string TableWords::writeText(const oldchips::Register& target) const {
    std::string text = this->text(format_.writing(target.address, 0));
    const std::size_t digits = (target.writeCaptions.size() + bitsOfDigit - 1) / bitsOfDigit;
    text.replace(text.size() - digits, digits, digits, 'x');
    return text;
}

std::string TableWords::readText(const oldchips::Register& source, RegisterView view) const {
    return text(format_.reading(source.address, view == RegisterView::High));
}

} // namespace bitlux
