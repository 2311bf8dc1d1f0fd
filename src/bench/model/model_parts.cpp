#include "bench/model/model_part.h"
#include "bench/zt72361/zt72361.h"
#include "bench/zt72516/zt72516.h"
#include "bench/zt72518/zt72518.h"
#include "bench/zt72537/zt72537.h"
#include "platform/failure.h"

#include <array>
#include <string>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

struct PartRow {
    const char* name;
    std::unique_ptr<ModelPart> (*make)(ModelStore& store);
};

constexpr std::array partRows{
    PartRow{"zt72361", zt72361::makePart}, PartRow{"zt72516", zt72516::makePart},
    PartRow{"zt72518", zt72518::makePart}, PartRow{"zt72537", zt72537::makePart}};

} // namespace

std::unique_ptr<ModelPart> makeModelPart(std::string_view name, ModelStore& store) {
    std::vector<std::string> names;
    for (const PartRow& row : partRows) {
        if (row.name == name)
            return row.make(store);
        names.emplace_back(row.name);
    }
    throw Failure(Failure::Kind::File,
                  fmt::format("{}: there is no part \"{}\" of a model. There is {}.",
                              store.chip().file, name, fmt::join(names, ", ")));
}

} // namespace bitlux
