# What every target of the project has in common.

include(GNUInstallDirs)

option(ZELVORA_COVERAGE "Count which lines of the SDK run (clang only)" OFF)
option(ZELVORA_QUICK_BUILD "Read GoogleTest once a program and several sources at once; hides missing includes" OFF)

# zelvora_target(NAME): warnings as errors, and includes written from the top of the tree.
function(zelvora_target name)
    target_compile_features(${name} PUBLIC cxx_std_23)
    target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    if(PROJECT_IS_TOP_LEVEL)
        target_compile_options(${name} PRIVATE -Werror)
    endif()
    # Optimizing, GCC 12 takes the bucket that a moved map left behind for one that was allocated.
    target_compile_options(${name} PRIVATE "$<$<CXX_COMPILER_ID:GNU>:-Wno-free-nonheap-object>")
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/ZelvoraIOS>"
    )
    if(ZELVORA_COVERAGE AND name STREQUAL "ZelvoraIOS")
        # Counters that can be moved live in a shared mapping of the profile, so that they outlive a process that stops
        # on a programming error. Who includes the SDK counts too: of an inline function the linker keeps any copy.
        target_compile_options(${name} PUBLIC
            "$<BUILD_INTERFACE:SHELL:-fprofile-instr-generate -fcoverage-mapping -mllvm -runtime-counter-relocation>")
        target_link_options(${name} PUBLIC -fprofile-instr-generate)
    endif()
endfunction()

# zelvora_test(NAME SOURCES ... LIBRARIES ... [LABELS ...]): a GoogleTest program whose every test runs in a process of its own,
# because the platform and the facade are one per process.
function(zelvora_test name)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;LIBRARIES;LABELS")
    add_executable(${name} ${TEST_SOURCES})
    zelvora_target(${name})
    target_compile_options(${name} PRIVATE -Wno-conversion)
    target_link_libraries(${name} PRIVATE ${TEST_LIBRARIES} GTest::gtest GTest::gtest_main)
    set(properties TIMEOUT 120 LABELS "${TEST_LABELS}")
    if("gtk" IN_LIST TEST_LABELS)
        # One display has one pointer and one focus.
        list(APPEND properties RESOURCE_LOCK display)
    endif()
    if(ZELVORA_QUICK_BUILD)
        target_precompile_headers(${name} PRIVATE <gtest/gtest.h> <chrono> <expected> <functional> <thread>)
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
