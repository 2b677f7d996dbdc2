# What every target of the project has in common.

# The flags that every target of ours is compiled with; found libraries are SYSTEM includes and so stay out of reach of -Werror.
add_library(quillon_flags INTERFACE)
target_compile_options(quillon_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
target_include_directories(quillon_flags INTERFACE ${PROJECT_SOURCE_DIR})
if(QUILLON_SANITIZE)
    target_compile_options(quillon_flags INTERFACE -fsanitize=${QUILLON_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
    target_link_options(quillon_flags INTERFACE -fsanitize=${QUILLON_SANITIZE})
endif()
if(QUILLON_COVERAGE)
    target_compile_options(quillon_flags INTERFACE --coverage)
    target_link_options(quillon_flags INTERFACE --coverage)
endif()

# quillon_library(NAME SOURCES... [LIBRARIES ...]): a folder of the applet as a static library, quillon_NAME.
function(quillon_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    add_library(quillon_${name} STATIC ${arg_SOURCES})
    target_link_libraries(quillon_${name} PUBLIC quillon_flags ${arg_LIBRARIES})
endfunction()

# quillon_test(NAME SOURCES... [LIBRARIES ...] [ENVIRONMENT ...]): a GoogleTest executable whose tests ctest finds by name.
function(quillon_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;ENVIRONMENT")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE quillon_flags ${arg_LIBRARIES} GTest::gmock GTest::gtest GTest::gtest_main)
    gtest_discover_tests(${name} TEST_PREFIX "" DISCOVERY_TIMEOUT 60 PROPERTIES ENVIRONMENT "${arg_ENVIRONMENT}" TIMEOUT 300)
endfunction()
