#include "mapimport/import_map.h"

#include "mapimport/chip_writer.h"
#include "mapimport/ipxact_reader.h"
#include "mapimport/map_builder.h"
#include "mapimport/register_fitter.h"
#include "mapimport/svd_reader.h"
#include "mapimport/xml_source.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

SourceMap read(const XmlSource& source, const ImportOptions& options, chips::Problems& notes) {
    const pugi::xml_node root = source.root();
    const bool isSvd = localName(root) == "device";
    if (!isSvd && localName(root) != "component")
        throw MapError({source.placeOf(root), fmt::format("`{}` is no register map", root.name()),
                        "Give an IP-XACT `component` or a CMSIS-SVD `device`."});
    MapBuilder builder(source, isSvd ? Notation::Svd : Notation::IpXact, options.only, notes);
    if (isSvd)
        readSvd(root, builder);
    else
        readIpXact(root, builder);
    builder.checkChoice();
    return std::move(builder.map);
}

} // namespace

ImportedMap importMap(std::string_view source, const std::string& file,
                      const ImportOptions& options) {
    ImportedMap made;
    try {
        const XmlSource xml(source);
        const FittedChip chip = fitted(read(xml, options, made.notes), options, made.notes);
        if (chip.registers.empty())
            throw MapError({xml.placeOf(xml.root()), "no register is left",
                            "See what was left out, or choose others."});
        ChipText written = chipText(chip, options, file, made.notes);
        made.text = std::move(written.text);
        made.registers = written.registers;
    } catch (const MapError& error) {
        made.problems.push_back(error.problem());
    }
    std::stable_sort(made.notes.begin(), made.notes.end(), [](const auto& one, const auto& other) {
        return one.at.line < other.at.line;
    });
    return made;
}

} // namespace bitlux::mapimport
