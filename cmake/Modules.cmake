# The modules and their dependencies. A module is a folder of src/, a static library, and a row here:
# the modules that it may include and link. An include against these rows, or of Qt outside of gui,
# stops the build with the file and the line.

# module -> modules that it uses directly; their own dependencies come with them
set(BITLUX_MODULES platform session chips mapimport registers transfer waveform sending journal config panels
    program bench workbench apps python gui)
set(BITLUX_USES_platform)
set(BITLUX_USES_session)
set(BITLUX_USES_chips platform)
set(BITLUX_USES_mapimport chips)
set(BITLUX_USES_registers chips)
set(BITLUX_USES_transfer platform session)
set(BITLUX_USES_waveform transfer registers)
set(BITLUX_USES_sending transfer)
set(BITLUX_USES_journal sending)
set(BITLUX_USES_config sending)
set(BITLUX_USES_panels sending registers)
set(BITLUX_USES_program config panels waveform journal)
set(BITLUX_USES_bench platform chips)
set(BITLUX_USES_workbench program bench)
set(BITLUX_USES_apps workbench mapimport)
set(BITLUX_USES_python workbench)
set(BITLUX_USES_gui workbench)
# modules that may use Qt
set(BITLUX_MODULES_WITH_QT gui)
# modules that wait for the user most of the time: optimised for size
set(BITLUX_SMALL_MODULES waveform config panels program apps python gui)

function(bitlux_reachable_modules MODULE RESULT)
    set(reached ${MODULE})
    set(open ${MODULE})
    while(open)
        list(POP_FRONT open next)
        foreach(lower IN LISTS BITLUX_USES_${next})
            if(NOT lower IN_LIST reached)
                list(APPEND reached ${lower})
                list(APPEND open ${lower})
            endif()
        endforeach()
    endwhile()
    set(${RESULT} ${reached} PARENT_SCOPE)
endfunction()

# Checks the includes of every file of a module. ROOT is the folder that holds the modules.
function(bitlux_check_includes ROOT MODULE)
    bitlux_reachable_modules(${MODULE} allowed)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${ROOT}/${MODULE}/*.h ${ROOT}/${MODULE}/*.cpp)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
    foreach(file IN LISTS files)
        file(STRINGS ${file} includes REGEX "^[ \t]*#[ \t]*include")
        foreach(line IN LISTS includes)
            if(line MATCHES "[<\"]([a-z]+)/" AND CMAKE_MATCH_1 IN_LIST BITLUX_MODULES
               AND NOT CMAKE_MATCH_1 IN_LIST allowed)
                message(FATAL_ERROR "${file}: the module ${MODULE} may not include ${CMAKE_MATCH_1}: ${line}")
            endif()
            if(line MATCHES "include[ \t]*[<\"][^>\"]*\\.\\./")
                message(FATAL_ERROR "${file}: the module ${MODULE} may not leave its folder: ${line}")
            endif()
            if(line MATCHES "[<\"]Q[A-Za-z0-9]+[/>\"]|<q[a-z0-9]+\\.h>"
               AND NOT MODULE IN_LIST BITLUX_MODULES_WITH_QT)
                message(FATAL_ERROR "${file}: the module ${MODULE} may not include Qt: ${line}")
            endif()
        endforeach()
    endforeach()
endfunction()

# Checks what a module's library links, after all libraries are known.
function(bitlux_check_links MODULE)
    if(MODULE IN_LIST BITLUX_MODULES_WITH_QT)
        return()
    endif()
    get_target_property(links bitlux_${MODULE} LINK_LIBRARIES)
    foreach(library IN LISTS links)
        if(library MATCHES "[Qq]t[0-9]?|KF[0-9]")
            message(FATAL_ERROR "The module ${MODULE} links ${library}: the core knows no Qt")
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
# compiled alike and name the same headers; the first of them precompiles for all. Processor time that
# each kind saves a release build: core 51 s, small 29 s, qt 106 s, tests 18 s, tests_on_bench 27 s,
# tests_with_qt 60 s.
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

# bitlux_add_module(NAME SOURCES a.cpp ... LINKS library ... PROGRAMS name ... APART b.cpp ...
#             PRECOMPILED <header> ... TOGETHER c.cpp ...)
# A program NAME is made of NAME.cpp, which holds its main function, and the module's library. Sources
# that stand APART the module builds by itself. Large headers of libraries that many of its sources
# include it has PRECOMPILED; sources that would each compile the same library are compiled TOGETHER
# (14 sources of the command line: 14 s of processor time for 83; 12 of the Python module: 18 s for 80).
function(bitlux_add_module NAME)
    cmake_parse_arguments(PARSE_ARGV 1 MODULE "" "" "SOURCES;LINKS;PROGRAMS;APART;PRECOMPILED;TOGETHER")
    list(TRANSFORM MODULE_PROGRAMS APPEND .cpp OUTPUT_VARIABLE mains)
    bitlux_check_includes(${PROJECT_SOURCE_DIR}/src ${NAME})
    bitlux_check_registered(${CMAKE_CURRENT_SOURCE_DIR} ${MODULE_SOURCES} ${mains} ${MODULE_APART})
    set(small "")
    if(NAME IN_LIST BITLUX_SMALL_MODULES AND BITLUX_TUNE)
        set(small -Os)
    endif()
    if(MODULE_SOURCES)
        add_library(bitlux_${NAME} STATIC ${MODULE_SOURCES})
        set(scope PUBLIC)
        set(kind core)
        if(small)
            target_compile_options(bitlux_${NAME} PRIVATE ${small})
            set(kind small)
        endif()
        if(NAME IN_LIST BITLUX_MODULES_WITH_QT)
            set(kind qt)
            set_target_properties(bitlux_${NAME} PROPERTIES AUTOMOC ON)
        else() # goes into the Python module too; hidden, it is called no slower for it
            set_target_properties(bitlux_${NAME} PROPERTIES
                POSITION_INDEPENDENT_CODE ON
                CXX_VISIBILITY_PRESET hidden
                VISIBILITY_INLINES_HIDDEN ON)
        endif()
        bitlux_reachable_modules(${NAME} reached)
        if(platform IN_LIST reached) # the common headers are those of its libraries
            bitlux_precompile(bitlux_${NAME} ${kind} ${MODULE_PRECOMPILED})
        endif()
        bitlux_compile_together(bitlux_${NAME} ${MODULE_TOGETHER})
    else()
        add_library(bitlux_${NAME} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_include_directories(bitlux_${NAME} ${scope} ${PROJECT_SOURCE_DIR}/src)
    list(TRANSFORM BITLUX_USES_${NAME} PREPEND bitlux_ OUTPUT_VARIABLE lower)
    target_link_libraries(bitlux_${NAME} ${scope} ${lower} ${MODULE_LINKS})
    bitlux_check_links(${NAME})
    foreach(program IN LISTS MODULE_PROGRAMS)
        add_executable(${program} ${program}.cpp)
        target_link_libraries(${program} PRIVATE bitlux_${NAME})
        target_compile_definitions(${program} PRIVATE BITLUX_VERSION="${PROJECT_VERSION}")
        target_compile_options(${program} PRIVATE ${small})
    endforeach()
endfunction()
