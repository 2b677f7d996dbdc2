# Compiles, for each pair of folders, an include of the upper folder with the include folders of the lower one, and fails if that
# works. COMPILER, SOURCE_FOLDER and COMPILE_COMMANDS are given.

# From the ground up, as CMakeLists.txt has them; image/ stands above trigger/ and uses it. The software board is no folder of the
# applet's, and its drawing knows nothing of the board.
set(folders softboard/pixels softboard/src support info files wrapper design debug trigger image engine applet)

# include_options(VARIABLE FOLDER): the -I options that a source of FOLDER is compiled with.
function(include_options variable folder)
    file(READ ${COMPILE_COMMANDS} commands)
    string(REGEX MATCH "\"command\": \"([^\"]+) -c ${SOURCE_FOLDER}/${folder}/[A-Za-z]+\\.cpp\"" found "${commands}")
    if(NOT found)
        message(FATAL_ERROR "no source of ${folder}/ is compiled")
    endif()
    string(REGEX MATCHALL "-I[^ ]+" options "${CMAKE_MATCH_1}")
    set(${variable} ${options} PARENT_SCOPE)
endfunction()

# includes(VARIABLE OPTIONS HEADER): whether HEADER is found with OPTIONS.
function(includes variable options header)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/climbing_include.cpp)
    file(WRITE ${source} "#if !__has_include(\"${header}\")\n#error missing\n#endif\n")
    execute_process(COMMAND ${COMPILER} -std=c++20 -fsyntax-only ${options} ${source} RESULT_VARIABLE status OUTPUT_QUIET ERROR_QUIET)
    if(status EQUAL 0)
        set(${variable} TRUE PARENT_SCOPE)
    else()
        set(${variable} FALSE PARENT_SCOPE)
    endif()
endfunction()

set(climbing 0)
list(LENGTH folders count)
math(EXPR last "${count} - 1")
foreach(place RANGE ${last})
    list(GET folders ${place} folder)
    include_options(options ${folder})
    foreach(upperPlace RANGE ${last})
        list(GET folders ${upperPlace} upper)
        file(GLOB headers RELATIVE ${SOURCE_FOLDER} ${SOURCE_FOLDER}/${upper}/*.h)
        list(GET headers 0 header)
        includes(seen "${options}" ${header})
        if(upperPlace EQUAL place AND NOT seen)
            message(FATAL_ERROR "${folder}/ does not find its own ${header}: this check does not look at the right options")
        elseif(upperPlace GREATER place AND seen)
            message(SEND_ERROR "${folder}/ finds ${header}, and ${upper}/ stands above it: a folder sees only the folders beneath it")
            math(EXPR climbing "${climbing} + 1")
        endif()
    endforeach()
endforeach()
if(climbing EQUAL 0)
    message("A folder sees only the folders beneath it.")
endif()
