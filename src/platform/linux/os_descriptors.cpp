#include "platform/linux/os_descriptors.h"

#include "platform/letters.h"

#include <algorithm>
#include <array>
#include <span>

namespace bitlux {

namespace {

constexpr std::uint8_t standardToDevice = 0x80;
constexpr std::uint8_t vendorToDevice = 0xC0;
constexpr std::uint8_t vendorToInterface = 0xC1;
constexpr std::uint8_t getDescriptor = 6;
constexpr std::uint16_t longestAnswer = 4096;

/// What is left of a descriptor while it is taken apart from its front. Taking more than there is
/// leaves it empty and damaged, and gives zeros.
class Bytes {
public:
    explicit Bytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    [[nodiscard]] bool isDamaged() const { return damaged_; }
    [[nodiscard]] bool isEmpty() const { return bytes_.empty(); }

    Bytes take(std::size_t count) {
        if (count > bytes_.size()) {
            bytes_ = {};
            damaged_ = true;
            return Bytes({});
        }
        const Bytes taken(bytes_.first(count));
        bytes_ = bytes_.subspan(count);
        return taken;
    }

    /// Takes a number, the low byte first.
    std::uint32_t number(std::size_t size) {
        std::uint32_t value = 0;
        unsigned shift = 0;
        for (const std::uint8_t byte : take(size).bytes_) {
            value |= std::uint32_t{byte} << shift;
            shift += 8;
        }
        return value;
    }

    /// Takes all as UTF-16 text. No name that is looked for has other characters than those of
    /// ASCII: they become question marks.
    std::string text() {
        std::string characters;
        while (bytes_.size() >= 2) {
            const std::uint32_t unit = number(2);
            characters += unit < 0x80 ? static_cast<char>(unit) : '?';
        }
        return characters;
    }

    [[nodiscard]] bool equals(std::span<const std::uint8_t> other) const {
        return std::equal(bytes_.begin(), bytes_.end(), other.begin(), other.end());
    }

private:
    std::span<const std::uint8_t> bytes_;
    bool damaged_ = false;
};

using Names = std::vector<std::string>;

/// Adds the strings of a registry value, each of which ends in a zero.
void addStrings(std::string_view value, Names& names) {
    while (!value.empty()) {
        const std::size_t length = std::min(value.find('\0'), value.size());
        if (length > 0)
            names.emplace_back(value.substr(0, length));
        value.remove_prefix(std::min(length + 1, value.size()));
    }
}

/// Takes a registry property, in which type and length of the value are numbers of `numberSize`
/// bytes, and adds the classes that it names.
void addProperty(Bytes& property, std::size_t numberSize, Names& names) {
    constexpr std::uint32_t oneString = 1;
    constexpr std::uint32_t manyStrings = 7;
    const std::uint32_t type = property.number(numberSize);
    std::string name = property.take(property.number(2)).text();
    const std::string value = property.take(property.number(numberSize)).text();
    name.erase(std::find(name.begin(), name.end(), '\0'), name.end());
    const bool isText = type == oneString || type == manyStrings;
    const bool isClass = equalIgnoringCase(name, "DeviceInterfaceGUID") ||
                         equalIgnoringCase(name, "DeviceInterfaceGUIDs");
    if (isText && isClass)
        addStrings(value, names);
}

/// The answer, cut to the length that it contains as a number of `size` bytes at `offset`;
/// nothing where it is shorter than that.
std::optional<std::vector<std::uint8_t>> askWhole(const AskDevice& ask, ControlQuestion question,
                                                  std::size_t offset, std::size_t size) {
    question.length = longestAnswer;
    std::optional<std::vector<std::uint8_t>> answer = ask(question);
    if (!answer)
        return std::nullopt;
    Bytes head(*answer);
    head.take(offset);
    const std::uint32_t length = head.number(size);
    if (head.isDamaged() || length > answer->size())
        return std::nullopt;
    answer->resize(length);
    return answer;
}

// Version 1.0: a string of fixed number contains the code of a request for the extended properties.

std::optional<std::uint8_t> vendorCodeOfString(const AskDevice& ask) {
    static constexpr std::array<std::uint8_t, 16> head{0x12, 0x03, 'M', 0, 'S', 0, 'F', 0,
                                                       'T',  0,    '1', 0, '0', 0, '0', 0};
    constexpr std::uint16_t osString = 0x03EE;
    const auto answer = ask({standardToDevice, getDescriptor, osString, 0, head.size() + 2});
    if (!answer || answer->size() != head.size() + 2)
        return std::nullopt;
    Bytes bytes(*answer);
    if (!bytes.take(head.size()).equals(head))
        return std::nullopt;
    return static_cast<std::uint8_t>(bytes.number(1));
}

Names classesOfVersion1(const AskDevice& ask) {
    constexpr std::uint16_t extendedProperties = 5;
    const std::optional<std::uint8_t> code = vendorCodeOfString(ask);
    if (!code)
        return {};
    const auto answer = askWhole(ask, {vendorToInterface, *code, 0, extendedProperties}, 0, 4);
    if (!answer)
        return {};
    Bytes properties(*answer);
    properties.take(4 + 2); // length and version
    if (properties.number(2) != extendedProperties)
        return {};
    Names names;
    for (std::uint32_t left = properties.number(2); left > 0 && !properties.isEmpty(); --left) {
        const std::uint32_t size = properties.number(4);
        if (size < 4)
            return {};
        Bytes property = properties.take(size - 4);
        addProperty(property, 4, names);
        if (properties.isDamaged() || property.isDamaged())
            return {};
    }
    return names;
}

// Version 2.0: a capability of the whole device contains the code of a request for the set.

std::optional<std::uint8_t> vendorCodeOfCapability(const AskDevice& ask) {
    static constexpr std::array<std::uint8_t, 16> osPlatform{0xDF, 0x60, 0xDD, 0xD8, 0x89, 0x45,
                                                             0xC7, 0x4C, 0x9C, 0xD2, 0x65, 0x9D,
                                                             0x9E, 0x64, 0x8A, 0x9F};
    constexpr std::uint8_t platform = 5;
    constexpr std::uint16_t allCapabilities = 0x0F00;
    const auto answer = askWhole(ask, {standardToDevice, getDescriptor, allCapabilities, 0}, 2, 2);
    if (!answer)
        return std::nullopt;
    Bytes capabilities(*answer);
    capabilities.take(5);
    while (!capabilities.isEmpty()) {
        const std::uint32_t size = capabilities.number(1);
        if (size < 3)
            return std::nullopt;
        Bytes capability = capabilities.take(size - 1);
        capability.take(1); // always the same
        if (capability.number(1) != platform)
            continue;
        capability.take(1);
        if (!capability.take(osPlatform.size()).equals(osPlatform))
            continue;
        capability.take(4 + 2); // version and length of the set
        const auto code = static_cast<std::uint8_t>(capability.number(1));
        return capability.isDamaged() ? std::nullopt : std::optional(code);
    }
    return std::nullopt;
}

/// Takes the next descriptor off a set, and with it all that is about another interface.
bool takeOfSet(Bytes& set, Names& names) {
    constexpr std::uint32_t functionSubset = 2;
    constexpr std::uint32_t property = 4;
    const std::uint32_t size = set.number(2);
    if (size < 4)
        return false;
    Bytes descriptor = set.take(size - 2);
    const std::uint32_t type = descriptor.number(2);
    if (type == property)
        addProperty(descriptor, 2, names);
    if (type == functionSubset && descriptor.number(1) != 0) {
        descriptor.take(1);
        const std::uint32_t length = descriptor.number(2);
        if (length < size)
            return false;
        set.take(length - size);
    }
    return !set.isDamaged() && !descriptor.isDamaged();
}

Names classesOfVersion2(const AskDevice& ask) {
    constexpr std::uint16_t descriptorSet = 7;
    const std::optional<std::uint8_t> code = vendorCodeOfCapability(ask);
    if (!code)
        return {};
    const auto answer = askWhole(ask, {vendorToDevice, *code, 0, descriptorSet}, 8, 2);
    if (!answer)
        return {};
    Bytes set(*answer);
    Names names;
    while (!set.isEmpty())
        if (!takeOfSet(set, names))
            return {};
    return names;
}

} // namespace

std::vector<std::string> deviceInterfaceClasses(const AskDevice& ask, std::uint16_t usbVersion) {
    constexpr std::uint16_t firstWithCapabilities = 0x0201;
    if (usbVersion >= firstWithCapabilities)
        if (Names names = classesOfVersion2(ask); !names.empty())
            return names;
    return classesOfVersion1(ask);
}

} // namespace bitlux
