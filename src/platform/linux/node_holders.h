#pragma once

#include <string>
#include <vector>

namespace bitlux {

/// A program that has a device node open.
struct NodeHolder {
    int process;
    std::string name;
};

/// By process number, as far as the system lets this user see. `processes` is the kernel's folder
/// of them.
std::vector<NodeHolder> findHolders(const std::string& node,
                                    const std::string& processes = "/proc");

/// As "bitlux-forge (process 97), python3 (process 812)"; empty for nobody.
std::string holdersText(const std::vector<NodeHolder>& holders);

} // namespace bitlux
