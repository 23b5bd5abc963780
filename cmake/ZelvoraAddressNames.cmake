# Tells a mistake in the addresses while they are set: in the app it would be a shop that never opens.
#
# To be included before ZelvoraAddresses.cmake, as it looks at what was set by then.

get_cmake_property(zelvora_variables VARIABLES)
list(FILTER zelvora_variables INCLUDE REGEX "^ZELVORA_ADDRESS_")
set(zelvora_addresses PRODUCTION_WEB_HOST DEVELOPMENT_WEB_HOST PRODUCTION_API_BASE DEVELOPMENT_API_BASE LOOKUP_ENDPOINT
    TRACKING_ENDPOINT)
foreach(variable IN LISTS zelvora_variables)
    string(REPLACE "ZELVORA_ADDRESS_" "" name "${variable}")
    if(NOT name IN_LIST zelvora_addresses)
        list(JOIN zelvora_addresses ", ZELVORA_ADDRESS_" known)
        message(FATAL_ERROR "There is no address ${variable}. There are ZELVORA_ADDRESS_${known}.")
    endif()
endforeach()

# zelvora_check_addresses(): refuses web hosts that are more than a host, and warns of names that never resolve.
function(zelvora_check_addresses)
    foreach(name PRODUCTION_WEB_HOST DEVELOPMENT_WEB_HOST)
        if(ZELVORA_ADDRESS_${name} MATCHES "[/?#]")
            message(FATAL_ERROR
                "ZELVORA_ADDRESS_${name} is a host without a scheme or a path, not ${ZELVORA_ADDRESS_${name}}")
        endif()
    endforeach()
    set(unset "")
    foreach(name IN LISTS zelvora_addresses)
        zelvora_host_of(host "${ZELVORA_ADDRESS_${name}}")
        if(host MATCHES "[.]example$")
            list(APPEND unset "ZELVORA_ADDRESS_${name}")
        endif()
    endforeach()
    foreach(domain IN LISTS ZELVORA_TRACKING_DOMAINS)
        if(domain MATCHES "[.]example$")
            list(APPEND unset "ZELVORA_TRACKING_DOMAINS")
            break()
        endif()
    endforeach()
    if(unset)
        list(JOIN unset ", " unset)
        message(WARNING "Names under .example never resolve, so no shop opens and no event arrives: ${unset}")
    endif()
endfunction()
