#include "bench/register_file.h"

#include <map>

namespace bitlux {

namespace {

class RegisterFile : public ShiftDevice {
public:
    RegisterFile(const oldchips::WordFormat& format, std::span<const oldchips::Register> table)
        : format_(format) {
        for (const oldchips::Register& row : table) {
            const auto width = static_cast<unsigned>(row.writeCaptions.size());
            registers_[row.address] = {.mask = ~std::uint32_t{0} >> (32 - width)};
        }
    }

protected:
    Shifted wordBegins(const BusShape&) override { return {}; }
    [[nodiscard]] bool answerBit(std::size_t n) const override;
    void wordEnds(const Shifted& received, const BusShape&) override;

private:
    struct Register {
        std::uint32_t mask = 0;
        std::uint32_t value = 0;
    };

    [[nodiscard]] bool isWrite(std::uint32_t word) const {
        return (word & format_.operationMask) == format_.write;
    }
    [[nodiscard]] int addressIn(std::uint32_t word) const {
        return static_cast<int>(word >> format_.addressShift & format_.addressMask);
    }

    const oldchips::WordFormat& format_;
    std::map<int, Register> registers_;
};

bool RegisterFile::answerBit(std::size_t n) const {
    const auto bits = static_cast<std::size_t>(format_.bits);
    const std::uint32_t word = requestWord(bits);
    const auto found = registers_.find(addressIn(word));
    return n < bits && !isWrite(word) && found != registers_.end() &&
           (found->second.value >> (bits - 1 - n) & 1) != 0;
}

void RegisterFile::wordEnds(const Shifted& received, const BusShape&) {
    const auto bits = static_cast<std::size_t>(format_.bits);
    if (received.size() != bits)
        return;
    const std::uint32_t word = requestWord(bits);
    const auto found = registers_.find(addressIn(word));
    if (found != registers_.end() && isWrite(word))
        found->second.value = word & found->second.mask;
}

} // namespace

std::unique_ptr<Device> makeRegisterFile(const oldchips::WordFormat& format,
                                         std::span<const oldchips::Register> table) {
    return std::make_unique<RegisterFile>(format, table);
}

} // namespace bitlux
