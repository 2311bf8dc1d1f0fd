# Writes OUTPUT, a source that holds the files in CHIPS as texts: cmake -DOUTPUT=... -DCHIPS=... -P.
string(REPLACE "|" ";" CHIPS "${CHIPS}")
set(rows "")
set(texts "")
set(number 0)
foreach(chip IN LISTS CHIPS)
    get_filename_component(name ${chip} NAME_WE)
    file(READ ${chip} text)
    string(APPEND texts "constexpr std::string_view text${number} = R\"chip(${text})chip\";\n")
    string(APPEND rows "    {\"${name}\", text${number}},\n")
    math(EXPR number "${number} + 1")
endforeach()
file(WRITE ${OUTPUT} "#include \"chips/embedded_chips.h\"

#include <array>

namespace bitlux::chips {

namespace {

${texts}
constexpr std::array<EmbeddedChip, ${number}> all{{
${rows}}};

} // namespace

std::span<const EmbeddedChip> embeddedChips() {
    return all;
}

} // namespace bitlux::chips
")
