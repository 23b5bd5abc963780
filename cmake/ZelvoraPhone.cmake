# What the phone's adapter and module are compiled with: the phone's frameworks or, elsewhere, GNUstep and doubles of them.

enable_language(OBJCXX)
set(CMAKE_OBJCXX_STANDARD 23)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)

add_library(zelvora_phone_system INTERFACE)
target_compile_options(zelvora_phone_system INTERFACE
    "$<$<COMPILE_LANGUAGE:OBJCXX>:SHELL:-fobjc-arc -fobjc-arc-exceptions>")
if(CMAKE_SYSTEM_NAME STREQUAL "iOS")
    target_compile_options(zelvora_phone_system INTERFACE
        "$<$<COMPILE_LANGUAGE:OBJCXX>:SHELL:-fobjc-weak -Wobjc-missing-super-calls -Warc-repeated-use-of-weak \
-Wunguarded-availability-new -Wnullable-to-nonnull-conversion>")
    target_link_libraries(zelvora_phone_system INTERFACE
        -lSystem -lobjc -lc++ "-framework Foundation" "-framework CoreFoundation" "-framework UIKit" "-framework WebKit"
        "-weak_framework AppTrackingTransparency" "-framework AdSupport")
else()
    add_subdirectory("${PROJECT_SOURCE_DIR}/tests/uikit/runtime" tests/uikit/runtime)
    target_link_libraries(zelvora_phone_system INTERFACE zelvora_gnustep)
endif()

# zelvora_precompile_phone(NAME HEADER...): the same as zelvora_precompile, for the sources in Objective-C++, with the headers
# that most of them include.
function(zelvora_precompile_phone name)
    set(headers ${ARGN} <Foundation/Foundation.h> <UIKit/UIKit.h> <WebKit/WebKit.h> ${ZELVORA_STANDARD_HEADERS})
    list(TRANSFORM headers REPLACE ">$" "$<ANGLE-R>")
    list(TRANSFORM headers REPLACE "^(.+)$" "$<$<COMPILE_LANGUAGE:OBJCXX>:\\1>")
    zelvora_precompile(${name} ${headers})
endfunction()

# zelvora_count_lines(NAME): which lines run is counted where the build says so.
function(zelvora_count_lines name)
    if(ZELVORA_COVERAGE)
        target_compile_options(${name} PRIVATE -fprofile-instr-generate -fcoverage-mapping)
        target_link_options(${name} INTERFACE -fprofile-instr-generate)
    endif()
endfunction()
