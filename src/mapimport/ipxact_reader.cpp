#include "mapimport/ipxact_reader.h"

#include <array>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

constexpr std::uint64_t mostRegisterCopies = 65'536;
constexpr std::uint64_t bitsOfByte = 8;
constexpr int mostRegisterFileDepth = 16; ///< register files in each other

/// What an element hands down to those in it.
struct IpxactScope {
    std::string block;
    std::string prefix; ///< names of the register files, each with an underscore
    std::uint64_t base = 0;
    std::uint64_t unitBits = bitsOfByte; ///< of an address
    Behaviour behaviour;
    int depth = 0;
};

bool isTrue(pugi::xml_node node) {
    return textOf(node) == "true" || textOf(node) == "1";
}

class IpXactReader {
public:
    explicit IpXactReader(MapBuilder& builder) : builder_(builder) {}

    void run(pugi::xml_node component) {
        checkNamespace(component);
        builder_.map.title = textOf(childOf(component, "name"));
        builder_.map.description = textOf(childOf(component, "description"));
        for (const pugi::xml_node& map : childOf(component, "memoryMaps").children())
            if (localName(map) == "memoryMap" && isPresent(map))
                readMap(map);
    }

private:
    void checkNamespace(pugi::xml_node component) const {
        const std::string_view name = component.name();
        const std::size_t colon = name.find(':');
        const std::string declared = colon == std::string_view::npos
                                         ? "xmlns"
                                         : "xmlns:" + std::string(name.substr(0, colon));
        const std::string_view uri = component.attribute(declared.c_str()).value();
        for (const std::string_view known :
             {"/1685-2009", "/1685-2014", "/SPIRIT/1.4", "/SPIRIT/1.5"})
            if (uri.ends_with(known))
                return;
        builder_.fail(component, fmt::format("\"{}\" is no namespace that is read", uri),
                      "Export the map as IP-XACT of IEEE 1685-2009 or 1685-2014.");
    }

    static bool isPresent(pugi::xml_node node) { return textOf(childOf(node, "isPresent")) != "0"; }

    void readMap(pugi::xml_node map) {
        IpxactScope scope;
        if (const pugi::xml_node unit = childOf(map, "addressUnitBits"); unit)
            scope.unitBits = builder_.number(unit);
        if (scope.unitBits == 0)
            builder_.fail(childOf(map, "addressUnitBits"), "an address covers at least one bit",
                          "Correct `addressUnitBits`.");
        for (const pugi::xml_node& child : map.children()) {
            const std::string_view kind = localName(child);
            if (kind == "addressBlock" && isPresent(child))
                readBlock(child, scope);
            else if (kind == "bank" || kind == "memoryRemap" || kind == "subspaceMap")
                builder_.note(child, fmt::format("a `{}` is not read", kind), "It is left out.");
        }
    }

    void readBlock(pugi::xml_node block, IpxactScope scope) {
        scope.block = builder_.nameOf(block);
        if (!builder_.wants(scope.block))
            return;
        if (const pugi::xml_node base = childOf(block, "baseAddress"); base)
            scope.base = builder_.number(base);
        builder_.apply(childOf(block, "access"), {}, {}, scope.behaviour);
        scope.behaviour.isVolatile = isTrue(childOf(block, "volatile"));
        readRegisters(block, scope);
    }

    // NOLINTBEGIN(misc-no-recursion): no deeper than `mostRegisterFileDepth`
    void readRegisters(pugi::xml_node parent, const IpxactScope& scope) {
        if (scope.depth > mostRegisterFileDepth)
            builder_.fail(parent, "register files lie too deep in each other",
                          "Put them up to 16 deep into each other.");
        for (const pugi::xml_node& child : parent.children()) {
            const std::string_view kind = localName(child);
            if ((kind != "register" && kind != "registerFile") || !isPresent(child))
                continue;
            try {
                readCopies(child, scope);
            } catch (const UnknownNumber& unknown) {
                builder_.note(child,
                              fmt::format("the {} \"{}\" is left out: {}", kind,
                                          textOf(childOf(child, "name")), unknown.what()),
                              "Write a number in place of the expression.");
            }
            if (builder_.isFull())
                return;
        }
    }

    void readCopies(pugi::xml_node node, const IpxactScope& scope) {
        const bool isFile = localName(node) == "registerFile";
        const std::string name = builder_.nameOf(node);
        const std::uint64_t offset = required(node, "addressOffset");
        const std::uint64_t size = isFile ? 0 : required(node, "size");
        Copies copies = copiesOf(node);
        if (!copies.indices.empty())
            copies.step =
                isFile ? required(node, "range") : (size + scope.unitBits - 1) / scope.unitBits;
        for (std::uint64_t place = 0; place < copies.count && !builder_.isFull(); ++place) {
            builder_.countElement(node);
            IpxactScope copy = scope;
            copy.base += offset + place * copies.step;
            const std::string called = scope.prefix + copies.nameOf(name, place);
            if (isFile) {
                copy.prefix = called + "_";
                ++copy.depth;
                readRegisters(node, copy);
            } else {
                readRegister(node, called, size, copy);
            }
        }
    }
    // NOLINTEND(misc-no-recursion)

    /// Several `dim` are an array of arrays: "_0_0", "_0_1", ...
    Copies copiesOf(pugi::xml_node node) {
        Copies copies;
        for (const pugi::xml_node& dim : node.children()) {
            if (localName(dim) != "dim")
                continue;
            const std::uint64_t count = number(dim);
            if (count == 0 || count > mostRegisterCopies / copies.count)
                builder_.fail(dim, "an array has 1 to 65,536 elements", "Correct `dim`.");
            std::vector<std::string> indices;
            for (std::uint64_t outer = 0; outer < copies.count; ++outer)
                for (std::uint64_t place = 0; place < count; ++place)
                    indices.push_back(copies.indices.empty()
                                          ? std::to_string(place)
                                          : fmt::format("{}_{}", copies.indices[outer], place));
            copies.indices = std::move(indices);
            copies.count *= count;
        }
        return copies;
    }

    void readRegister(pugi::xml_node node, const std::string& name, std::uint64_t size,
                      const IpxactScope& scope) {
        MapRegister made;
        made.block = scope.block;
        made.name = name;
        made.description = textOf(childOf(node, "description"));
        made.address = scope.base;
        made.width = size;
        made.at = builder_.placeOf(node);
        made.behaviour = scope.behaviour;
        applyAll(node, made.behaviour);
        made.reset = resetOf(childOf(node, "reset"));
        for (const pugi::xml_node& child : node.children())
            if (localName(child) == "field" && isPresent(child))
                readField(child, made);
            else if (localName(child) == "alternateRegisters")
                builder_.note(child,
                              fmt::format("the alternate registers of \"{}\" are left out", name),
                              "They have its address; describe them as fields with `shares`.");
        builder_.add(std::move(made), node);
    }

    void applyAll(pugi::xml_node node, Behaviour& behaviour) {
        builder_.apply(childOf(node, "access"), childOf(node, "modifiedWriteValue"),
                       childOf(node, "readAction"), behaviour);
        if (const pugi::xml_node found = childOf(node, "volatile"); found)
            behaviour.isVolatile = isTrue(found);
    }

    /// 0 where there is none, or where it is an expression.
    std::uint64_t resetOf(pugi::xml_node reset) {
        const pugi::xml_node value = childOf(reset, "value");
        if (!value)
            return 0;
        const pugi::xml_node mask = childOf(reset, "mask");
        try {
            return number(value) & (mask ? number(mask) : ~std::uint64_t{0});
        } catch (const UnknownNumber& unknown) {
            builder_.note(value, unknown.what(), "The reset value is 0 instead.");
            return 0;
        }
    }

    void readField(pugi::xml_node node, MapRegister& owner) {
        MapField made;
        made.name = builder_.nameOf(node);
        made.description = textOf(childOf(node, "description"));
        made.at = builder_.placeOf(node);
        made.first = required(node, "bitOffset");
        if (const pugi::xml_node width = childOf(node, "bitWidth"); width)
            made.width = number(width);
        made.isReserved = isTrue(childOf(node, "reserved"));
        made.behaviour = owner.behaviour;
        applyAll(node, made.behaviour);
        if (const pugi::xml_node resets = childOf(node, "resets"); resets && made.first < 64)
            owner.reset |= resetOf(childOf(resets, "reset")) << made.first;
        for (const pugi::xml_node& value : childOf(node, "enumeratedValues").children())
            if (localName(value) == "enumeratedValue")
                readValue(value, made);
        owner.fields.push_back(std::move(made));
    }

    void readValue(pugi::xml_node node, MapField& field) {
        const std::optional<Pattern> pattern = builder_.pattern(childOf(node, "value"));
        if (!pattern)
            return builder_.note(
                node,
                fmt::format("the value \"{}\" is an expression", textOf(childOf(node, "value"))),
                "It is left out.");
        field.values.push_back({.name = builder_.nameOf(node),
                                .description = std::string(textOf(childOf(node, "description"))),
                                .value = pattern->value,
                                .either = pattern->either,
                                .isDefault = false,
                                .at = builder_.placeOf(node)});
    }

    /// A number that is an expression of parameters.
    class UnknownNumber : public MapError {
        using MapError::MapError;
    };

    [[nodiscard]] std::uint64_t number(pugi::xml_node node) const {
        try {
            return builder_.number(node);
        } catch (const MapError& error) {
            throw UnknownNumber(error.problem());
        }
    }

    [[nodiscard]] std::uint64_t required(pugi::xml_node node, const char* name) const {
        const pugi::xml_node found = childOf(node, name);
        if (!found)
            builder_.fail(node, fmt::format("`{}` is missing", name), "Add it.");
        return number(found);
    }

    MapBuilder& builder_;
};

} // namespace

void readIpXact(pugi::xml_node component, MapBuilder& builder) {
    IpXactReader(builder).run(component);
}

} // namespace bitlux::mapimport
