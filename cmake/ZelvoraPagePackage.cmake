# zelvora_page_package(TARGET DIRECTORY): a target that builds the modules of the package for page authors from page/src, for the
# pages of the local service. It needs neither Node.js nor a package registry, as esbuild is one program; `./run page` checks the
# types and builds what is packed.
function(zelvora_page_package target directory)
    find_program(ZELVORA_ESBUILD esbuild HINTS "${PROJECT_SOURCE_DIR}/page/node_modules/.bin" REQUIRED
        DOC "The bundler of the package for page authors (Debian: esbuild)")
    set(page "${PROJECT_SOURCE_DIR}/page")
    set(script_source "${PROJECT_SOURCE_DIR}/ZelvoraIOS/internal/BridgeScript.cpp")
    set(script "${directory}-generated/bridge-script.ts")
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${page}/src/*.ts")
    file(MAKE_DIRECTORY "${directory}-generated")
    add_custom_command(
        OUTPUT "${script}"
        COMMAND sed -n -f "${page}/tools/bridge-script.sed" "${script_source}" > "${script}"
        DEPENDS "${page}/tools/bridge-script.sed" "${script_source}"
        COMMENT "Reading the bridge script"
        VERBATIM
    )
    add_custom_command(
        OUTPUT "${directory}/index.js" "${directory}/stand-in/index.js"
        COMMAND "${ZELVORA_ESBUILD}" "${page}/src/index.ts" "${page}/src/stand-in/index.ts" "--outdir=${directory}"
            "--outbase=${page}/src" --bundle --splitting --format=esm --target=safari16 --log-level=warning
            "--alias:zelvora-bridge-script=${script}"
        DEPENDS ${sources} "${script}"
        COMMENT "Building the package for page authors"
        VERBATIM
    )
    add_custom_target(${target} DEPENDS "${directory}/index.js" "${directory}/stand-in/index.js")
endfunction()
