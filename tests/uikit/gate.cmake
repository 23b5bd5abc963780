# Toolchain: the phone's adapter and module as Mach-O, on Debian. What it makes has the layouts of another C library: it is
# looked at, and never shipped. ZELVORA_GATE_TARGET chooses the device, as by default, or the simulator.

set(CMAKE_SYSTEM_NAME iOS)
set(ZELVORA_GATE_TARGET "arm64-apple-ios26.2" CACHE STRING "The device, or x86_64-apple-ios26.2-simulator")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZELVORA_GATE_TARGET)
string(REGEX MATCH "^[a-z0-9_]+" CMAKE_SYSTEM_PROCESSOR "${ZELVORA_GATE_TARGET}")

set(gate "${CMAKE_CURRENT_LIST_DIR}")
set(libcxx /usr/lib/llvm-19/include/c++/v1)
# By this name CMake knows what it builds for.
string(REGEX MATCH "simulator" simulator "${ZELVORA_GATE_TARGET}")
if(simulator)
    cmake_path(SET made NORMALIZE "${gate}/../../build/stubs/iPhoneSimulator.sdk")
else()
    cmake_path(SET made NORMALIZE "${gate}/../../build/stubs/iPhoneOS.sdk")
endif()

# Debian's libc++ 19 with availability switched on: what is newer than the oldest phone does not compile.
file(STRINGS "${libcxx}/__config_site" site)
list(FILTER site EXCLUDE REGEX "_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS")
list(JOIN site "\n" site)
file(CONFIGURE OUTPUT "${made}/site/__config_site" CONTENT "${site}\n" @ONLY)

# Stubs that name what the phone's libraries are known to export.
if(NOT EXISTS "${made}/usr/lib/libSystem.tbd" OR "${gate}/link/symbols.txt" IS_NEWER_THAN "${made}/usr/lib/libSystem.tbd")
    execute_process(COMMAND python3 "${gate}/link/mktbd.py" "${made}" COMMAND_ERROR_IS_FATAL ANY)
endif()

set(CMAKE_OSX_SYSROOT "${made}")
set(CMAKE_OSX_ARCHITECTURES "${CMAKE_SYSTEM_PROCESSOR}")
set(CMAKE_OSX_DEPLOYMENT_TARGET 26.2)
set(CMAKE_AR /usr/bin/llvm-ar-19)
set(CMAKE_RANLIB /usr/bin/llvm-ranlib-19)
set(CMAKE_STRIP /usr/bin/llvm-strip-19)
set(CMAKE_INSTALL_NAME_TOOL /usr/bin/llvm-install-name-tool-19)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
foreach(language C CXX OBJCXX)
    set(CMAKE_${language}_COMPILER /usr/bin/clang++-19)
    set(CMAKE_${language}_COMPILER_TARGET "${ZELVORA_GATE_TARGET}")
    set(CMAKE_${language}_FLAGS_INIT "-nostdinc++ -nostdlibinc -isystem ${made}/site -isystem ${libcxx} -isystem ${gate}/decl \
-D_GNU_SOURCE -isystem ${gate}/runtime/muslshim -isystem /usr/include/x86_64-linux-musl")
endforeach()
set(CMAKE_C_COMPILER /usr/bin/clang-19)
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-fuse-ld=lld -nostdlib")
