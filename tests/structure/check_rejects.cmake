# Proves that the rules of cmake/Modules.cmake stop a build: configures small trees, each with one
# offence, and expects a refusal that names the file. SOURCE and WORK are given on the command
# line.

file(REMOVE_RECURSE ${WORK})

# Configures a project that checks the modules below SOURCES and the sources of its module platform,
# where port.cpp is the one in a build file.
function(configure SOURCES RESULT ERRORS)
    file(WRITE ${WORK}/CMakeLists.txt "
        cmake_minimum_required(VERSION 3.25)
        project(Offender LANGUAGES NONE)
        include(${SOURCE}/cmake/Modules.cmake)
        foreach(module IN LISTS BITLUX_MODULES)
            bitlux_check_includes(${SOURCES} \${module})
        endforeach()
        if(EXISTS ${WORK}/src/platform)
            bitlux_check_registered(${WORK}/src/platform port.cpp)
        endif()")
    execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S ${WORK} -B ${WORK}/build
                    RESULT_VARIABLE result ERROR_VARIABLE errors OUTPUT_QUIET)
    string(REGEX REPLACE "[ \n]+" " " errors "${errors}") # CMake folds long messages
    set(${RESULT} ${result} PARENT_SCOPE)
    set(${ERRORS} "${errors}" PARENT_SCOPE)
endfunction()

# Expects that a tree with one FILE of one LINE is refused with a message that has both FILE and
# REASON, or accepted when there is no REASON.
function(expect FILE LINE REASON)
    file(REMOVE_RECURSE ${WORK}/src)
    file(WRITE ${WORK}/src/${FILE} "// a line before\n${LINE}\n")
    configure(${WORK}/src result errors)
    if(REASON STREQUAL "")
        if(NOT result EQUAL 0)
            message(SEND_ERROR "${FILE} with ${LINE} was refused: ${errors}")
        endif()
    elseif(result EQUAL 0 OR NOT errors MATCHES "${FILE}.*${REASON}")
        message(SEND_ERROR "${FILE} with ${LINE} should be refused, but: ${result} ${errors}")
    endif()
endfunction()

foreach(header <QString> <QtWidgets/QWidget> <QVector2D> <Qt> <qstring.h> <qvector2d.h>
               <QtCore/qstring.h> \"QString\")
    expect(program/main.h "#include ${header}" "may not include Qt")
endforeach()
expect(transfer/word.cpp "  #  include <QString>" "may not include Qt")
expect(platform/port.cpp "#include \"session/session.h\"" "may not include session")
expect(session/deep/down.h "#include \"platform/clock.h\"" "may not include platform")
expect(transfer/word.cpp "#include \"sending/session_log.h\"" "may not include sending")
expect(bench/device.cpp "#include <program/program.h>" "may not include program")
expect(sending/log.cpp "#include \"../program/program.h\"" "may not leave")
expect(platform/linux/forgotten.cpp "" "is in no build file")

expect(platform/port.cpp "#include <linux/parport.h>" "")
expect(sending/queue.cpp "#include \"session/queue.h\" // QString <- qstring.h" "")
expect(gui/window.cpp "#include <QWidget>" "")
expect(apps/main.cpp "#include \"platform/clock.h\"" "") # two modules down

file(REMOVE_RECURSE ${WORK}/src)
configure(${SOURCE}/src result errors)
if(NOT result EQUAL 0)
    message(SEND_ERROR "The sources themselves are refused: ${errors}")
endif()
