#pragma once

#include "chips/register_map.h"

#include <cstdint>
#include <string>

namespace bitlux {

enum class RegisterView : std::uint8_t { Low, High };

/// How the words of a chip carry its registers, and where the lines of a sequence go: what pages of
/// registers need to know of a panel.
class RegisterWords {
public:
    virtual ~RegisterWords() = default;

    virtual void write(const oldchips::Register& target, std::uint32_t data) = 0;
    /// The register's value as the chip answered; 0 when nothing came.
    virtual std::uint32_t read(const oldchips::Register& source, RegisterView view) = 0;
    virtual void append(const std::string& name, const std::string& value) = 0;

    /// The words in hexadecimal, for tooltips; the data of a write is told as "xx".
    [[nodiscard]] virtual std::string writeText(const oldchips::Register& target) const = 0;
    [[nodiscard]] virtual std::string readText(const oldchips::Register& source,
                                               RegisterView view) const = 0;
};

/// Names of a register's lines in sequences and in the command store; empty for a register that has
/// none.
inline std::string lineName(const oldchips::Register& any, const char* ending) {
    return any.stem.empty() ? std::string{} : std::string(any.stem) + ending;
}
inline std::string writeLine(const oldchips::Register& target) {
    return target.writeName.empty() ? lineName(target, " Write") : std::string(target.writeName);
}
inline std::string readLine(const oldchips::Register& source, RegisterView view) {
    return lineName(source, view == RegisterView::Low ? " Read Low" : " Read High");
}

} // namespace bitlux
