# The libraries of another build of the same compiler and standard library, so that nothing is compiled twice.

find_package(Threads REQUIRED)

# zelvora_built(NAME FOLDER LIBRARY...): a library of that build, and what it links.
function(zelvora_built name folder)
    add_library(${name} STATIC IMPORTED GLOBAL)
    set_target_properties(${name} PROPERTIES IMPORTED_LOCATION "${ZELVORA_BUILD_TO_LINK}/${folder}/lib${name}.a")
    target_include_directories(${name} INTERFACE "${PROJECT_SOURCE_DIR}")
    target_compile_features(${name} INTERFACE cxx_std_23)
    target_link_libraries(${name} INTERFACE ${ARGN})
endfunction()

zelvora_built(zelvora_platform ZelvoraPlatform Threads::Threads)
zelvora_built(ZelvoraIOS ZelvoraIOS zelvora_platform)
zelvora_built(zelvora_shared ZelvoraAdapters/shared zelvora_platform)
zelvora_built(zelvora_test_support tests/support zelvora_platform)
