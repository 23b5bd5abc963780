# What every target of the project has in common.

# zelvora_target(NAME): warnings as errors, and includes written from the top of the tree.
function(zelvora_target name)
    target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
    target_include_directories(${name} PUBLIC "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>")
endfunction()

# zelvora_test(NAME SOURCES ... LIBRARIES ... [LABELS ...]): a GoogleTest program whose every test runs in a process of its own,
# because the platform and the facade are one per process.
function(zelvora_test name)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;LIBRARIES;LABELS")
    add_executable(${name} ${TEST_SOURCES})
    zelvora_target(${name})
    target_compile_options(${name} PRIVATE -Wno-conversion)
    target_link_libraries(${name} PRIVATE ${TEST_LIBRARIES} GTest::gtest GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 LABELS "${TEST_LABELS}")
endfunction()
