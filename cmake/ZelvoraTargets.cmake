# What every target of the project has in common.

include(GNUInstallDirs)

option(ZELVORA_COVERAGE "Count which lines of the SDK run (clang only)" OFF)
option(ZELVORA_QUICK_BUILD "Precompile the headers of the system; hides missing includes" OFF)
option(ZELVORA_MERGE_PROGRAMS "Compile the sources of each test program and example together; hides their missing includes" OFF)

set(ZELVORA_STANDARD_HEADERS
    <algorithm> <array> <atomic> <chrono> <cmath> <condition_variable> <coroutine> <cstddef> <cstdint> <expected>
    <filesystem> <functional> <map> <memory> <mutex> <optional> <set> <span> <sstream> <string> <string_view> <thread>
    <unordered_map> <utility> <variant> <vector>)
set(ZELVORA_GTK_HEADERS <gio/gio.h> <gtk/gtk.h> <libsoup/soup.h> <webkit/webkit.h>)

# zelvora_merge(NAME): the sources of NAME, which no host links, may be compiled together. Called before zelvora_target.
function(zelvora_merge name)
    if(ZELVORA_MERGE_PROGRAMS)
        set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
    endif()
endfunction()

# zelvora_target(NAME): warnings as errors, and includes written from the top of the tree.
function(zelvora_target name)
    target_compile_features(${name} PUBLIC cxx_std_23)
    target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    if(PROJECT_IS_TOP_LEVEL)
        target_compile_options(${name} PRIVATE -Werror)
    endif()
    get_target_property(is_merged ${name} UNITY_BUILD)
    if(is_merged)
        # A source may use the names of those that it is compiled together with, and is not the main file any more.
        target_compile_options(${name} PRIVATE -Wno-shadow "$<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>")
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

# zelvora_precompile(NAME HEADER...): a quick build reads these headers once for NAME. Headers of the project stay out, so that
# a change to one of them compiles no more than what includes it.
function(zelvora_precompile name)
    if(ZELVORA_QUICK_BUILD)
        target_precompile_headers(${name} PRIVATE ${ARGN})
    endif()
endfunction()

# zelvora_precompile_as(NAME OTHER): NAME shares what is precompiled for OTHER. The compilers ask that both are compiled with
# the same options: two libraries or two programs, and both or neither with the flags of GTK.
function(zelvora_precompile_as name other)
    if(ZELVORA_QUICK_BUILD)
        target_precompile_headers(${name} REUSE_FROM ${other})
    endif()
endfunction()

# zelvora_linked(OUT LIBRARY...): these libraries and all that they link, as far as who uses them is compiled accordingly.
function(zelvora_linked out)
    set(libraries ${ARGN})
    set(linked "")
    while(libraries)
        list(POP_FRONT libraries library)
        if(TARGET "${library}" AND NOT library IN_LIST linked)
            list(APPEND linked "${library}")
            get_target_property(more "${library}" INTERFACE_LINK_LIBRARIES)
            if(more)
                list(APPEND libraries ${more})
            endif()
        endif()
    endwhile()
    set(${out} "${linked}" PARENT_SCOPE)
endfunction()

# zelvora_precompile_test(NAME LIBRARY...): test programs that are compiled with the same options share their headers.
function(zelvora_precompile_test name)
    if(NOT ZELVORA_QUICK_BUILD)
        return()
    endif()
    zelvora_linked(linked ${ARGN} GTest::gtest)
    set(options "-pthread")
    foreach(library ${linked})
        get_target_property(more "${library}" INTERFACE_COMPILE_OPTIONS)
        if(more)
            list(APPEND options ${more})
        endif()
    endforeach()
    list(SORT options)
    list(REMOVE_DUPLICATES options)
    string(SHA1 kind "${options}")
    string(SUBSTRING "${kind}" 0 8 kind)
    set(owner "zelvora_test_headers_${kind}")
    if(NOT TARGET ${owner})
        file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/cmake/${owner}.cpp" CONTENT "")
        add_library(${owner} OBJECT EXCLUDE_FROM_ALL "${PROJECT_BINARY_DIR}/cmake/${owner}.cpp")
        zelvora_target(${owner})
        # It is compiled as a program is, not as a library.
        set_target_properties(${owner} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
        target_compile_options(${owner} PRIVATE ${CMAKE_CXX_COMPILE_OPTIONS_PIE} -Wno-conversion -pthread)
        target_link_libraries(${owner} PRIVATE ${ARGN} GTest::gtest)
        set(headers <gtest/gtest.h> ${ZELVORA_STANDARD_HEADERS})
        if("PkgConfig::ZELVORA_GTK_DEPENDENCIES" IN_LIST linked)
            list(APPEND headers ${ZELVORA_GTK_HEADERS})
        endif()
        zelvora_precompile(${owner} ${headers})
    endif()
    zelvora_precompile_as(${name} ${owner})
endfunction()

# zelvora_test(NAME SOURCES ... LIBRARIES ... [APART ...] [LABELS ...]): a GoogleTest program whose every test runs in a process
# of its own, because the platform and the facade are one per process. Where a whole build merges sources, those that are APART
# remain alone, because they have a helper of the same name as another.
function(zelvora_test name)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;LIBRARIES;APART;LABELS")
    list(APPEND TEST_SOURCES ${TEST_APART})
    set_source_files_properties(${TEST_APART} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    add_executable(${name} ${TEST_SOURCES})
    zelvora_merge(${name})
    zelvora_target(${name})
    # Some of the libraries ask for threads, and who shares precompiled headers is compiled alike.
    target_compile_options(${name} PRIVATE -Wno-conversion -pthread)
    target_link_libraries(${name} PRIVATE ${TEST_LIBRARIES} GTest::gtest GTest::gtest_main)
    set(properties TIMEOUT 300 LABELS "${TEST_LABELS}")
    if("gtk" IN_LIST TEST_LABELS)
        # A display has one pointer and one focus. These tests take longest, so they come first.
        list(APPEND properties RESOURCE_GROUPS displays:1 COST 1)
        set_target_properties(${name} PROPERTIES
            CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/scripts/on_display.sh")
    endif()
    zelvora_precompile_test(${name} ${TEST_LIBRARIES})
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
