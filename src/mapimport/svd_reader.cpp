#include "mapimport/svd_reader.h"

#include "mapimport/svd_element.h"

#include <limits>
#include <utility>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

constexpr int mostClusterDepth = 16; ///< clusters in clusters
constexpr std::uint64_t everyBit = std::numeric_limits<std::uint64_t>::max();

/// What an element hands down to those in it.
struct SvdScope {
    std::string block;
    std::string prefix; ///< names of the clusters, each with an underscore
    std::uint64_t base = 0;
    std::uint64_t size = 32;
    std::uint64_t reset = 0;
    std::uint64_t resetMask = everyBit;
    Behaviour behaviour;
    int depth = 0;
};

class SvdReader {
public:
    explicit SvdReader(MapBuilder& builder) : builder_(builder) {}

    void run(pugi::xml_node device) {
        builder_.map.title = textOf(childOf(device, "name"));
        builder_.map.description = textOf(childOf(device, "description"));
        const SvdElement all(device, builder_);
        const SvdScope scope = inner(all, {});
        for (const pugi::xml_node& node : all.list("peripherals", "peripheral"))
            readPeripheral(node, scope);
    }

private:
    /// The scope in an element.
    SvdScope inner(const SvdElement& element, SvdScope scope) {
        const auto take = [&](const char* name, std::uint64_t& to) {
            if (const pugi::xml_node found = element.find(name); found)
                to = builder_.number(found);
        };
        take("size", scope.size);
        take("resetValue", scope.reset);
        take("resetMask", scope.resetMask);
        builder_.apply(element.find("access"), {}, {}, scope.behaviour);
        ++scope.depth;
        if (scope.depth > mostClusterDepth)
            builder_.fail(element.own(), "clusters lie too deep in each other",
                          "Put them up to 12 deep into each other.");
        return scope;
    }

    void readPeripheral(pugi::xml_node node, const SvdScope& outer) {
        const SvdElement element(node, builder_);
        const std::string name = builder_.nameOf(node);
        SvdScope scope = inner(element, outer);
        const std::uint64_t base = required(element, "baseAddress");
        const Copies copies = copiesOf(node, builder_);
        for (std::uint64_t place = 0; place < copies.count; ++place) {
            builder_.countElement(node);
            scope.block = copies.nameOf(name, place);
            scope.base = base + place * copies.step;
            if (builder_.wants(scope.block) && !builder_.isFull())
                readRegisters(element, "registers", scope);
        }
    }

    // NOLINTBEGIN(misc-no-recursion): no deeper than `mostClusterDepth`
    void readRegisters(const SvdElement& parent, std::string_view container,
                       const SvdScope& scope) {
        for (const pugi::xml_node& child : parent.list(container, "register", "cluster")) {
            if (builder_.isFull())
                return;
            const SvdElement element(child, builder_);
            const std::string name = builder_.nameOf(child);
            const std::uint64_t offset = required(element, "addressOffset");
            const Copies copies = copiesOf(child, builder_);
            const SvdScope own = inner(element, scope);
            for (std::uint64_t place = 0; place < copies.count && !builder_.isFull(); ++place) {
                builder_.countElement(child);
                SvdScope copy = own;
                copy.base = scope.base + offset + place * copies.step;
                const std::string called = scope.prefix + copies.nameOf(name, place);
                if (localName(child) == "register") {
                    readRegister(element, called, copy);
                } else {
                    copy.prefix = called + "_";
                    readRegisters(element, "", copy);
                }
            }
        }
    }
    // NOLINTEND(misc-no-recursion)

    void readRegister(const SvdElement& element, const std::string& name, const SvdScope& scope) {
        MapRegister made;
        made.block = scope.block;
        made.name = name;
        made.description = textOf(element.find("description"));
        made.address = scope.base;
        made.width = scope.size;
        made.reset = scope.reset & scope.resetMask;
        made.behaviour = scope.behaviour;
        made.at = builder_.placeOf(element.own());
        builder_.apply({}, element.find("modifiedWriteValues"), element.find("readAction"),
                       made.behaviour);
        for (const pugi::xml_node& node : element.list("fields", "field"))
            readField(node, made);
        builder_.add(std::move(made), element.own());
    }

    void readField(pugi::xml_node node, MapRegister& owner) {
        const SvdElement element(node, builder_);
        MapField made;
        made.name = builder_.nameOf(node);
        made.description = textOf(element.find("description"));
        made.at = builder_.placeOf(node);
        made.behaviour = owner.behaviour;
        builder_.apply(element.find("access"), element.find("modifiedWriteValues"),
                       element.find("readAction"), made.behaviour);
        readBits(element, made);
        for (const pugi::xml_node& values : element.list("", "enumeratedValues"))
            readValues(values, made);
        const Copies copies = copiesOf(node, builder_);
        for (std::uint64_t place = 0; place < copies.count; ++place) {
            builder_.countElement(node);
            MapField copy = made;
            copy.name = copies.nameOf(made.name, place);
            copy.first += place * copies.step;
            owner.fields.push_back(std::move(copy));
        }
    }

    /// "[7:4]", or the lowest and the highest bit, or the lowest bit and how many.
    void readBits(const SvdElement& element, MapField& made) {
        if (const pugi::xml_node range = element.find("bitRange"); range)
            return readRange(range, made);
        const pugi::xml_node low = element.find("lsb");
        const pugi::xml_node high = element.find("msb");
        if (low && high)
            return setBits(high, builder_.number(high), builder_.number(low), made);
        made.first = required(element, "bitOffset");
        if (const pugi::xml_node width = element.find("bitWidth"); width)
            made.width = builder_.number(width);
    }

    void readRange(pugi::xml_node range, MapField& made) {
        std::string_view text = textOf(range);
        const std::size_t colon = text.find(':');
        const bool isRange =
            text.starts_with('[') && text.ends_with(']') && colon != std::string_view::npos;
        const auto high = numberFrom(isRange ? text.substr(1, colon - 1) : "", Notation::Svd);
        const auto low = numberFrom(isRange ? text.substr(colon + 1, text.size() - colon - 2) : "",
                                    Notation::Svd);
        if (!high || !low)
            builder_.fail(range, fmt::format("`bitRange` names no bits: \"{}\"", text),
                          "Write it as [7:4].");
        setBits(range, *high, *low, made);
    }

    void setBits(pugi::xml_node node, std::uint64_t high, std::uint64_t low, MapField& made) const {
        if (high < low || high == everyBit)
            builder_.fail(node,
                          fmt::format("the field's highest bit is {}, its lowest {}", high, low),
                          "Write the highest bit first.");
        made.first = low;
        made.width = high - low + 1;
    }

    void readValues(pugi::xml_node node, MapField& field) {
        const SvdElement element(node, builder_);
        for (const pugi::xml_node& value : element.list("", "enumeratedValue")) {
            MapValue made;
            made.name = textOf(childOf(value, "name"));
            made.description = textOf(childOf(value, "description"));
            made.at = builder_.placeOf(value);
            const std::string_view isDefault = textOf(childOf(value, "isDefault"));
            made.isDefault = isDefault == "true" || isDefault == "1";
            const pugi::xml_node number = childOf(value, "value");
            const std::optional<Pattern> pattern = builder_.pattern(number);
            if (!pattern && !made.isDefault)
                builder_.fail(
                    number ? number : value,
                    fmt::format("`value` is no number: \"{}\"", textOf(number)),
                    "Write it as 5, 0x5 or #101, with an x for a bit that is not compared.");
            made.value = pattern.value_or(Pattern()).value;
            made.either = pattern.value_or(Pattern()).either;
            field.values.push_back(std::move(made));
        }
    }

    [[nodiscard]] std::uint64_t required(const SvdElement& element, const char* name) const {
        const pugi::xml_node found = element.find(name);
        if (!found)
            builder_.fail(element.own(), fmt::format("`{}` is missing", name), "Add it.");
        return builder_.number(found);
    }

    MapBuilder& builder_;
};

} // namespace

void readSvd(pugi::xml_node device, MapBuilder& builder) {
    SvdReader(builder).run(device);
}

} // namespace bitlux::mapimport
