# What every target of the project has in common.

# The flags that every target of ours is compiled with; found libraries are SYSTEM includes and so stay out of reach of the warnings.
add_library(quillon_flags INTERFACE)
set(quillonWarnings -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(QUILLON_WERROR)
    list(APPEND quillonWarnings -Werror)
endif()
target_compile_options(quillon_flags INTERFACE ${quillonWarnings})
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Lets ccache see through precompiled headers.
    target_compile_options(quillon_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
endif()
if(QUILLON_SANITIZE)
    target_compile_options(quillon_flags INTERFACE -fsanitize=${QUILLON_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
    target_link_options(quillon_flags INTERFACE -fsanitize=${QUILLON_SANITIZE})
endif()
if(QUILLON_COVERAGE)
    target_compile_options(quillon_flags INTERFACE --coverage)
    target_link_options(quillon_flags INTERFACE --coverage)
endif()

# What the world may know of the applet, under all folders: headers and lists alone.
add_library(quillon_vocabulary INTERFACE)
target_include_directories(quillon_vocabulary INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)

# quillon_sees(TARGET SCOPE FOLDER): TARGET finds the headers of FOLDER, as "FOLDER/Header.h", and those of no other folder by it: the
# include folder holds a link to FOLDER and nothing else.
function(quillon_sees target scope folder)
    # A folder in a folder has a view beside that of the outer one.
    string(REPLACE "/" "." name ${folder})
    set(view ${CMAKE_BINARY_DIR}/views/${name})
    if(NOT EXISTS ${view}/${folder})
        cmake_path(GET folder PARENT_PATH outer)
        file(MAKE_DIRECTORY ${view}/${outer})
        file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${view}/${folder} SYMBOLIC)
    endif()
    target_include_directories(${target} ${scope} ${view})
endfunction()

# quillon_precompiles(TARGET): TARGET, a library, compiles with the standard headers that most sources include, which are precompiled
# once: they are a third of the compile time of a small source.
function(quillon_precompiles target)
    if(NOT TARGET quillon_standard_headers)
        file(WRITE ${CMAKE_BINARY_DIR}/quillon_standard_headers.cpp "// Compiles the headers that all libraries share.\n")
        add_library(quillon_standard_headers OBJECT ${CMAKE_BINARY_DIR}/quillon_standard_headers.cpp)
        target_link_libraries(quillon_standard_headers PRIVATE quillon_flags)
        target_precompile_headers(quillon_standard_headers PRIVATE
            <algorithm> <array> <atomic> <cstdint> <filesystem> <functional> <map> <memory> <mutex> <optional> <set> <sstream> <string>
            <string_view> <utility> <variant> <vector>)
    endif()
    target_precompile_headers(${target} REUSE_FROM quillon_standard_headers)
endfunction()

# quillon_library(NAME SOURCES... [LIBRARIES ...] [OWN_HEADERS]): a folder of the project as a static library, quillon_NAME. It sees its
# own headers and those of its LIBRARIES, which must stand beneath it. OWN_HEADERS: it precompiles headers of its own choice.
function(quillon_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "OWN_HEADERS" "" "SOURCES;LIBRARIES")
    list(FIND quillonFolders ${name} place)
    foreach(library IN LISTS arg_LIBRARIES)
        if(library MATCHES "^quillon_(.+)")
            list(FIND quillonFolders ${CMAKE_MATCH_1} placeOfLibrary)
            if(placeOfLibrary GREATER place)
                message(FATAL_ERROR "${name}/ may not use ${CMAKE_MATCH_1}/: a folder sees only the folders beneath it")
            endif()
        endif()
    endforeach()
    add_library(quillon_${name} STATIC ${arg_SOURCES})
    quillon_sees(quillon_${name} PUBLIC ${name})
    target_link_libraries(quillon_${name} PUBLIC ${arg_LIBRARIES} PRIVATE quillon_flags)
    if(NOT arg_OWN_HEADERS)
        quillon_precompiles(quillon_${name})
    endif()
endfunction()

# What a test's own code is compiled with: fast, and without the three checks of every pointer that it uses, which are half of its
# compile time under the undefined-behaviour sanitizer. What it tests has them all.
set(quillonTestOptions -O0)
if(QUILLON_SANITIZE MATCHES undefined)
    list(APPEND quillonTestOptions -fno-sanitize=null,alignment,vptr)
endif()
# Seconds; the longest tests take many times as long in a sanitizer build.
set(quillonTestTimeout 300)
if(QUILLON_SANITIZE)
    set(quillonTestTimeout 900)
endif()
set(quillonTestHeaders <gmock/gmock.h> <gtest/gtest.h> <string> <vector>)

# quillon_test(NAME SOURCES... [LIBRARIES ...] [ENVIRONMENT ...] [OWN_HEADERS] [ALONE]): a GoogleTest executable whose tests ctest finds by name. Tests are compiled to
# be built fast, with the framework's headers compiled once; what they test is compiled as it is shipped.
# OWN_HEADERS is for a test whose libraries bring compiler flags of their own, with which the shared headers can't be used; it compiles them for itself.
# ALONE: ctest runs nothing beside it.
function(quillon_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "OWN_HEADERS;ALONE" "" "SOURCES;LIBRARIES;ENVIRONMENT")
    if(NOT TARGET quillon_test_headers)
        file(WRITE ${CMAKE_BINARY_DIR}/quillon_test_headers.cpp "// Compiles the headers that all tests share.\n")
        # An executable, as the tests are: headers are shared among objects of one kind only.
        add_executable(quillon_test_headers ${CMAKE_BINARY_DIR}/quillon_test_headers.cpp)
        target_link_libraries(quillon_test_headers PRIVATE quillon_flags GTest::gmock GTest::gtest GTest::gtest_main)
        target_compile_options(quillon_test_headers PRIVATE ${quillonTestOptions})
        target_precompile_headers(quillon_test_headers PRIVATE ${quillonTestHeaders})
    endif()
    add_executable(${name} ${arg_SOURCES})
    quillon_sees(${name} PRIVATE tests)
    set_property(GLOBAL APPEND PROPERTY quillonTestPrograms ${name})
    target_link_libraries(${name} PRIVATE quillon_flags ${arg_LIBRARIES} GTest::gmock GTest::gtest GTest::gtest_main)
    target_compile_options(${name} PRIVATE ${quillonTestOptions})
    if(arg_OWN_HEADERS)
        target_precompile_headers(${name} PRIVATE ${quillonTestHeaders})
    else()
        target_precompile_headers(${name} REUSE_FROM quillon_test_headers)
    endif()
    set(properties TIMEOUT ${quillonTestTimeout} RUN_SERIAL ${arg_ALONE})
    if(arg_ENVIRONMENT)
        # An empty value would be left out, and its name taken with the next.
        list(APPEND properties ENVIRONMENT "${arg_ENVIRONMENT}")
    endif()
    # A test is called in ctest what it is called in its program, parameters included.
    gtest_discover_tests(${name} NO_PRETTY_VALUES TEST_PREFIX "" DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
