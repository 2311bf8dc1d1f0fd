#pragma once

#include "platform/forms/controls.h"

#include <string>
#include <vector>

namespace bitlux {

/// A field of the dialog that gives a line a pin of the connector.
struct PinField {
    const forms::ComboBox* field;
    std::string line;   ///< "CS", or the name of an extra pin
    std::string number; ///< of the pin, as the conflict test compares it
};

/// Two lines or more on one pin.
struct PinClash {
    std::string pin; ///< as the fields show it
    std::vector<PinField> fields;
};

} // namespace bitlux
