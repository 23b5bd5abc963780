# How hosts find and link the libraries:
#
#     find_package(ZelvoraIOS 1.0 CONFIG COMPONENTS memory gtk)   and link ZelvoraIOS::ZelvoraIOS, ZelvoraIOS::memory, ...
#                                                                 (no component: all that are installed)
#     find_package(ZelvoraIOS 1.0 CONFIG COMPONENTS contract shared)   for an adapter outside of these sources
#     add_subdirectory(...)                                       and link the same names
#     pkg-config --cflags --libs ZelvoraIOS-gtk                   in any other build system
#
# Headers are installed below include/ZelvoraIOS, with the same paths as in the source tree.

include(CMakePackageConfigHelpers)
include(ZelvoraStandardLibrary)

# zelvora_library(TARGET NAME): gives a library the name that hosts link it by.
function(zelvora_library target name)
    add_library(ZelvoraIOS::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${name}
        VERSION "${PROJECT_VERSION}"
        SOVERSION "${PROJECT_VERSION_MAJOR}"
        INSTALL_RPATH "$ORIGIN"
        # Headers that are precompiled for several libraries must see the same definitions in all of them.
        DEFINE_SYMBOL ""
    )
endfunction()

zelvora_library(zelvora_platform platform)
zelvora_library(ZelvoraIOS ZelvoraIOS)
zelvora_library(zelvora_shared shared)
zelvora_library(zelvora_memory memory)
if(ZELVORA_GTK)
    zelvora_library(zelvora_gtk gtk)
endif()
if(BUILD_SHARED_LIBS)
    # See ZelvoraPlatform/Export.h. Every other library links the platform layer and inherits the definition.
    target_compile_definitions(zelvora_platform PUBLIC ZELVORA_SHARED)
endif()

if(NOT ZELVORA_INSTALL)
    return()
endif()

set(ZELVORA_INCLUDE_DIR "${CMAKE_INSTALL_INCLUDEDIR}/ZelvoraIOS")
set(ZELVORA_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/ZelvoraIOS")
set(ZELVORA_PKGCONFIG_DIR "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# zelvora_install(EXPORT TARGET...): one export file per component, so that a host without GTK needs none.
function(zelvora_install export)
    install(TARGETS ${ARGN} EXPORT ${export}
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    )
    install(EXPORT ${export} NAMESPACE ZelvoraIOS:: DESTINATION "${ZELVORA_PACKAGE_DIR}")
endfunction()

# zelvora_install_headers(FOLDER...): all headers but those in folders named "internal".
function(zelvora_install_headers)
    foreach(folder ${ARGN})
        install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}/" DESTINATION "${ZELVORA_INCLUDE_DIR}/${folder}"
            FILES_MATCHING PATTERN "*.h" PATTERN internal EXCLUDE)
    endforeach()
endfunction()

# zelvora_install_pkgconfig(NAME DESCRIPTION ... [LIBRARIES -l...] [REQUIRES ...] [IMPLEMENTATION ...]): IMPLEMENTATION lists
# the packages that only the library's own code uses; a host links them if that code becomes part of the host.
function(zelvora_install_pkgconfig name)
    cmake_parse_arguments(PARSE_ARGV 1 PC "" "DESCRIPTION" "LIBRARIES;REQUIRES;IMPLEMENTATION")
    set(requires ${PC_REQUIRES})
    set(requires_private "")
    if(BUILD_SHARED_LIBS)
        set(requires_private ${PC_IMPLEMENTATION})
    else()
        list(APPEND requires ${PC_IMPLEMENTATION})
    endif()
    file(RELATIVE_PATH to_prefix "/prefix/${ZELVORA_PKGCONFIG_DIR}" "/prefix")
    string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
    list(JOIN requires ", " requires)
    list(JOIN requires_private ", " requires_private)
    list(JOIN PC_LIBRARIES " " libraries)
    set(definitions "$<$<BOOL:${BUILD_SHARED_LIBS}>: -DZELVORA_SHARED>")
    file(GENERATE OUTPUT "${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc" CONTENT
"prefix=\${pcfiledir}/${to_prefix}

Name: ${name}
Description: ${PC_DESCRIPTION}
Version: ${PROJECT_VERSION}
Requires: ${requires}
Requires.private: ${requires_private}
Cflags: -I\${prefix}/${ZELVORA_INCLUDE_DIR}${definitions}
Libs: -L\${prefix}/${CMAKE_INSTALL_LIBDIR} ${libraries}
")
    install(FILES "${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc" DESTINATION "${ZELVORA_PKGCONFIG_DIR}")
endfunction()

zelvora_install(ZelvoraIOSCore zelvora_platform ZelvoraIOS)
zelvora_install(ZelvoraIOSShared zelvora_shared)
zelvora_install(ZelvoraIOSMemory zelvora_memory)
zelvora_install_headers(ZelvoraPlatform ZelvoraIOS ZelvoraAdapters/shared ZelvoraAdapters/memory)
zelvora_install_pkgconfig(ZelvoraIOS
    DESCRIPTION "Opens a shopping site in an app and reports what the user does there"
    LIBRARIES -lZelvoraIOS -lzelvora_platform
)
zelvora_install_pkgconfig(ZelvoraIOS-memory
    DESCRIPTION "ZelvoraIOS without a screen and a network, for the tests of its hosts"
    LIBRARIES -lzelvora_memory -lzelvora_shared -pthread
    REQUIRES "ZelvoraIOS = ${PROJECT_VERSION}"
)
if(ZELVORA_GTK)
    zelvora_install(ZelvoraIOSGtk zelvora_gtk)
    # The headers at the top are for hosts; those in the folders are the adapter's own.
    file(GLOB ZELVORA_HOST_HEADERS CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/ZelvoraAdapters/gtk/*.h")
    install(FILES ${ZELVORA_HOST_HEADERS} DESTINATION "${ZELVORA_INCLUDE_DIR}/ZelvoraAdapters/gtk")
    zelvora_install_pkgconfig(ZelvoraIOS-gtk
        DESCRIPTION "ZelvoraIOS on Linux desktops and phones"
        LIBRARIES -lzelvora_gtk -lzelvora_shared -pthread
        REQUIRES "ZelvoraIOS = ${PROJECT_VERSION}" gtk4
        IMPLEMENTATION webkitgtk-6.0 libsoup-3.0 libsystemd gio-unix-2.0
    )
endif()

# The contract suites are headers: an adapter outside of these sources compiles them with its own harness.
add_library(zelvora_contract INTERFACE)
target_include_directories(zelvora_contract INTERFACE
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>" "$<INSTALL_INTERFACE:${ZELVORA_INCLUDE_DIR}>")
target_link_libraries(zelvora_contract INTERFACE zelvora_platform GTest::gtest)
set_target_properties(zelvora_contract PROPERTIES EXPORT_NAME contract)
zelvora_install(ZelvoraIOSContract zelvora_contract)
zelvora_install_headers(ZelvoraContract)

zelvora_standard_library(ZELVORA_STANDARD_LIBRARY)
configure_package_config_file(cmake/ZelvoraIOSConfig.cmake.in "${PROJECT_BINARY_DIR}/cmake/ZelvoraIOSConfig.cmake"
    INSTALL_DESTINATION "${ZELVORA_PACKAGE_DIR}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/cmake/ZelvoraIOSConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/cmake/ZelvoraIOSConfig.cmake"
    "${PROJECT_BINARY_DIR}/cmake/ZelvoraIOSConfigVersion.cmake"
    "${PROJECT_SOURCE_DIR}/cmake/ZelvoraStandardLibrary.cmake"
    DESTINATION "${ZELVORA_PACKAGE_DIR}")
