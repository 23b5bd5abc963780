# zelvora_standard_library(OUT): what the C++ of this build is compiled for, as far as its flags for all targets tell; empty
# without C++, and for any other library.

include(CheckCXXSourceCompiles)

function(zelvora_standard_library out)
    set(libraries "libstdc++" "libc++" "libstdc++ with the strings of before C++11")
    set(conditions
        "defined(__GLIBCXX__) && _GLIBCXX_USE_CXX11_ABI"
        "defined(_LIBCPP_VERSION)"
        "defined(__GLIBCXX__) && !_GLIBCXX_USE_CXX11_ABI")
    set(found "")
    get_property(languages GLOBAL PROPERTY ENABLED_LANGUAGES)
    if(CXX IN_LIST languages)
        set(CMAKE_REQUIRED_QUIET ON)
        # What was found is kept for these flags only.
        string(MD5 flags "${CMAKE_CXX_COMPILER} ${CMAKE_CXX_FLAGS}")
        foreach(library condition IN ZIP_LISTS libraries conditions)
            string(MAKE_C_IDENTIFIER "ZELVORA_${library}_${flags}" is_this_one)
            check_cxx_source_compiles(
                "#include <cstddef>\n#if !(${condition})\n#error\n#endif\nint main() { }" ${is_this_one})
            if(${is_this_one})
                set(found "${library}")
                break()
            endif()
        endforeach()
    endif()
    set(${out} "${found}" PARENT_SCOPE)
endfunction()
