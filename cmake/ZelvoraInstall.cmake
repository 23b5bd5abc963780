# The installed package: find_package(ZelvoraIOS 1.0 CONFIG COMPONENTS memory gtk).
# Its headers keep their paths below include/ZelvoraIOS, so a host includes them as the sources here do.

include(CMakePackageConfigHelpers)

set(ZELVORA_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/ZelvoraIOS")

# zelvora_install(EXPORT NAME=TARGET...): one export file, so that a host that needs no GTK need not find it. A host that
# takes the sources into its own build links the same names.
function(zelvora_install export)
    foreach(pair ${ARGN})
        string(REPLACE "=" ";" pair "${pair}")
        list(GET pair 0 name)
        list(GET pair 1 target)
        set_target_properties(${target} PROPERTIES
            EXPORT_NAME ${name}
            VERSION "${PROJECT_VERSION}"
            SOVERSION "${PROJECT_VERSION_MAJOR}"
            INSTALL_RPATH "$ORIGIN"
        )
        # A library that uses what another one does not export fails here and not in the host.
        target_link_options(${target} PRIVATE "$<$<PLATFORM_ID:Linux>:LINKER:--no-undefined>")
        add_library(ZelvoraIOS::${name} ALIAS ${target})
        install(TARGETS ${target} EXPORT ${export}
            ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
            LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        )
    endforeach()
    install(EXPORT ${export} NAMESPACE ZelvoraIOS:: DESTINATION "${ZELVORA_PACKAGE_DIR}")
endfunction()

# zelvora_install_headers(FOLDER...)
function(zelvora_install_headers)
    foreach(folder ${ARGN})
        install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ZelvoraIOS/${folder}"
            FILES_MATCHING PATTERN "*.h")
    endforeach()
endfunction()

if(BUILD_SHARED_LIBS)
    # See ZelvoraPlatform/Export.h. Every other library links the platform layer and gets the definition from it.
    target_compile_definitions(zelvora_platform PUBLIC ZELVORA_SHARED)
endif()

zelvora_install(ZelvoraIOSCore platform=zelvora_platform ZelvoraIOS=ZelvoraIOS)
zelvora_install(ZelvoraIOSShared shared=zelvora_shared)
zelvora_install(ZelvoraIOSMemory memory=zelvora_memory)
zelvora_install_headers(ZelvoraPlatform ZelvoraIOS ZelvoraAdapters/shared ZelvoraAdapters/memory)
if(ZELVORA_GTK)
    zelvora_install(ZelvoraIOSGtk gtk=zelvora_gtk)
    zelvora_install_headers(ZelvoraAdapters/gtk)
endif()

configure_package_config_file(cmake/ZelvoraIOSConfig.cmake.in "${PROJECT_BINARY_DIR}/cmake/ZelvoraIOSConfig.cmake"
    INSTALL_DESTINATION "${ZELVORA_PACKAGE_DIR}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/cmake/ZelvoraIOSConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/cmake/ZelvoraIOSConfig.cmake"
    "${PROJECT_BINARY_DIR}/cmake/ZelvoraIOSConfigVersion.cmake"
    DESTINATION "${ZELVORA_PACKAGE_DIR}")
