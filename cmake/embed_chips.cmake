# Writes OUTPUT, a source that holds the files in CHIPS as texts: cmake -DOUTPUT=... -DCHIPS=... -P.
# Beside each stand the names of its devices with their descriptions, the chip's and behind it the
# device's own. They are taken from lines that a file of the product writes without indentation:
# `[[device]]`, `name = "..."`, `description = "..."`.
string(REPLACE "|" ";" CHIPS "${CHIPS}")
set(rows "")
set(texts "")
set(number 0)
foreach(file IN LISTS CHIPS)
    get_filename_component(name ${file} NAME_WE)
    file(READ ${file} text)
    file(STRINGS ${file} lines REGEX "^(\\[[a-z_]+\\]|\\[\\[[a-z_]+\\]\\]|name = |description = )")
    set(section "")
    set(description "")
    set(chip_name "\"${name}\"")
    set(devices "")
    foreach(line IN LISTS lines)
        if(line MATCHES "^\\[+([a-z_]+)\\]")
            set(section ${CMAKE_MATCH_1})
        elseif(section MATCHES "^chip$" AND line MATCHES "^name = (\".*\")")
            set(chip_name ${CMAKE_MATCH_1})
        elseif(section MATCHES "^chip$" AND line MATCHES "^description = \"(.*)\"")
            set(description ${CMAKE_MATCH_1})
        elseif(section MATCHES "^device$" AND line MATCHES "^name = (\".*\")")
            string(APPEND devices "{${CMAKE_MATCH_1}, \"${description}\"},\n    ")
        elseif(section MATCHES "^device$" AND line MATCHES "^description = \"(.*)\"")
            string(REGEX REPLACE "\"},\n    $" ". ${CMAKE_MATCH_1}\"},\n    " devices "${devices}")
        endif()
    endforeach()
    if(devices STREQUAL "")
        set(devices "{${chip_name}, \"${description}\"}")
    endif()
    string(APPEND texts "constexpr std::string_view text${number} = R\"chip(${text})chip\";\n"
                        "constexpr std::array devices${number}{std::to_array<EmbeddedChip::Device>({\n    ${devices}})};\n")
    string(APPEND rows "    {\"${name}\", devices${number}, text${number}},\n")
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
