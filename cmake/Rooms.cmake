# The house in build terms. A room is a folder of src/, a static library, and a row here:
# what it may include and link. The arrows point down; whoever draws one upwards, or brings Qt
# into the core, stops the build with the file and the line.

# room -> rooms it may use directly; what those may use comes with them
set(BITLUX_ROOMS platform session chips transfer waveform sending config panels program bench
    workbench apps python gui)
set(BITLUX_ARROWS_platform)
set(BITLUX_ARROWS_session)
set(BITLUX_ARROWS_chips platform)
set(BITLUX_ARROWS_transfer platform session)
set(BITLUX_ARROWS_waveform transfer)
set(BITLUX_ARROWS_sending transfer)
set(BITLUX_ARROWS_config sending)
set(BITLUX_ARROWS_panels sending chips)
set(BITLUX_ARROWS_program config panels waveform)
set(BITLUX_ARROWS_bench platform chips)
set(BITLUX_ARROWS_workbench program bench)
set(BITLUX_ARROWS_apps workbench)
set(BITLUX_ARROWS_python workbench)
set(BITLUX_ARROWS_gui workbench)
# rooms that may draw
set(BITLUX_ROOMS_WITH_QT gui)
# rooms that wait for the user most of the time: small code starts sooner and takes less memory
set(BITLUX_SMALL_ROOMS waveform config panels program apps python gui)

function(bitlux_reachable_rooms ROOM RESULT)
    set(reached ${ROOM})
    set(open ${ROOM})
    while(open)
        list(POP_FRONT open next)
        foreach(lower IN LISTS BITLUX_ARROWS_${next})
            if(NOT lower IN_LIST reached)
                list(APPEND reached ${lower})
                list(APPEND open ${lower})
            endif()
        endforeach()
    endwhile()
    set(${RESULT} ${reached} PARENT_SCOPE)
endfunction()

# Checks the includes of every file of a room. ROOT is the folder that holds the rooms.
function(bitlux_check_includes ROOT ROOM)
    bitlux_reachable_rooms(${ROOM} allowed)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${ROOT}/${ROOM}/*.h ${ROOT}/${ROOM}/*.cpp)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
    foreach(file IN LISTS files)
        file(STRINGS ${file} includes REGEX "^[ \t]*#[ \t]*include")
        foreach(line IN LISTS includes)
            if(line MATCHES "[<\"]([a-z]+)/" AND CMAKE_MATCH_1 IN_LIST BITLUX_ROOMS
               AND NOT CMAKE_MATCH_1 IN_LIST allowed)
                message(FATAL_ERROR "${file}: the room ${ROOM} may not include ${CMAKE_MATCH_1}: ${line}")
            endif()
            if(line MATCHES "include[ \t]*[<\"][^>\"]*\\.\\./")
                message(FATAL_ERROR "${file}: the room ${ROOM} may not leave its folder: ${line}")
            endif()
            if(line MATCHES "[<\"]Q[A-Za-z0-9]+[/>\"]|<q[a-z0-9]+\\.h>"
               AND NOT ROOM IN_LIST BITLUX_ROOMS_WITH_QT)
                message(FATAL_ERROR "${file}: the room ${ROOM} may not include Qt: ${line}")
            endif()
        endforeach()
    endforeach()
endfunction()

# Checks what a room's library links, after all libraries are known.
function(bitlux_check_links ROOM)
    if(ROOM IN_LIST BITLUX_ROOMS_WITH_QT)
        return()
    endif()
    get_target_property(links bitlux_${ROOM} LINK_LIBRARIES)
    foreach(library IN LISTS links)
        if(library MATCHES "[Qq]t[0-9]?|KF[0-9]")
            message(FATAL_ERROR "The room ${ROOM} links ${library}: the core knows no Qt")
        endif()
    endforeach()
endfunction()

# Every source below FOLDER must stand in SOURCES; one that is not built stops the build.
function(bitlux_check_registered FOLDER)
    file(GLOB_RECURSE present CONFIGURE_DEPENDS ${FOLDER}/*.cpp)
    foreach(file IN LISTS present)
        file(RELATIVE_PATH relative ${FOLDER} ${file})
        if(NOT relative IN_LIST ARGN)
            message(FATAL_ERROR "${file} is in no build file")
        endif()
    endforeach()
endfunction()

# Gives TARGET the common headers precompiled, and those that follow. The targets of a KIND are
# compiled alike and name the same headers; the first of them precompiles for all.
function(bitlux_precompile TARGET KIND)
    if(NOT BITLUX_PRECOMPILED_HEADERS)
        return()
    endif()
    get_property(first GLOBAL PROPERTY BITLUX_PRECOMPILED_${KIND})
    if(first)
        target_precompile_headers(${TARGET} REUSE_FROM ${first})
    else()
        target_precompile_headers(${TARGET} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/common.h ${ARGN})
        set_property(GLOBAL PROPERTY BITLUX_PRECOMPILED_${KIND} ${TARGET})
    endif()
endfunction()

# Compiles the sources of TARGET that follow as one. Without precompiled headers, where each source is
# to be seen as it is, they stay apart.
function(bitlux_compile_together TARGET)
    if(BITLUX_PRECOMPILED_HEADERS AND ARGN)
        set_target_properties(${TARGET} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
        set_source_files_properties(${ARGN} PROPERTIES UNITY_GROUP together)
    endif()
endfunction()

# bitlux_room(NAME SOURCES a.cpp ... LINKS library ... PROGRAMS name ... APART b.cpp ...
#             PRECOMPILED <header> ... TOGETHER c.cpp ...)
# A program NAME is made of NAME.cpp, which holds its main function, and the room's library. Sources
# that stand APART the room builds by itself. Large headers of libraries that many of its sources
# include it has PRECOMPILED; sources that would each compile the same library are compiled TOGETHER.
function(bitlux_room NAME)
    cmake_parse_arguments(PARSE_ARGV 1 ROOM "" "" "SOURCES;LINKS;PROGRAMS;APART;PRECOMPILED;TOGETHER")
    list(TRANSFORM ROOM_PROGRAMS APPEND .cpp OUTPUT_VARIABLE mains)
    bitlux_check_includes(${PROJECT_SOURCE_DIR}/src ${NAME})
    bitlux_check_registered(${CMAKE_CURRENT_SOURCE_DIR} ${ROOM_SOURCES} ${mains} ${ROOM_APART})
    set(small "")
    if(NAME IN_LIST BITLUX_SMALL_ROOMS AND BITLUX_TUNE)
        set(small -Os)
    endif()
    if(ROOM_SOURCES)
        add_library(bitlux_${NAME} STATIC ${ROOM_SOURCES})
        set(scope PUBLIC)
        set(kind core)
        if(small)
            target_compile_options(bitlux_${NAME} PRIVATE ${small})
            set(kind small)
        endif()
        if(NAME IN_LIST BITLUX_ROOMS_WITH_QT)
            set(kind qt)
            set_target_properties(bitlux_${NAME} PROPERTIES AUTOMOC ON)
        else() # goes into the Python module too; hidden, it is called no slower for it
            set_target_properties(bitlux_${NAME} PROPERTIES
                POSITION_INDEPENDENT_CODE ON
                CXX_VISIBILITY_PRESET hidden
                VISIBILITY_INLINES_HIDDEN ON)
        endif()
        bitlux_reachable_rooms(${NAME} reached)
        if(platform IN_LIST reached) # the common headers are those of its libraries
            bitlux_precompile(bitlux_${NAME} ${kind} ${ROOM_PRECOMPILED})
        endif()
        bitlux_compile_together(bitlux_${NAME} ${ROOM_TOGETHER})
    else()
        add_library(bitlux_${NAME} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_include_directories(bitlux_${NAME} ${scope} ${PROJECT_SOURCE_DIR}/src)
    list(TRANSFORM BITLUX_ARROWS_${NAME} PREPEND bitlux_ OUTPUT_VARIABLE lower)
    target_link_libraries(bitlux_${NAME} ${scope} ${lower} ${ROOM_LINKS})
    bitlux_check_links(${NAME})
    foreach(program IN LISTS ROOM_PROGRAMS)
        add_executable(${program} ${program}.cpp)
        target_link_libraries(${program} PRIVATE bitlux_${NAME})
        target_compile_definitions(${program} PRIVATE BITLUX_VERSION="${PROJECT_VERSION}")
        target_compile_options(${program} PRIVATE ${small})
    endforeach()
endfunction()
