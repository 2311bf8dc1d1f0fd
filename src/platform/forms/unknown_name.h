#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace bitlux::forms {

/// A name that no form, control, procedure or variable has.
class UnknownName : public std::runtime_error {
public:
    UnknownName(const std::string& name, std::vector<std::string> nearOnes);
    [[nodiscard]] const std::vector<std::string>& nearOnes() const { return near_; }

private:
    std::vector<std::string> near_;
};

} // namespace bitlux::forms
