# The privacy manifest of the phone's framework and package.

include(ZelvoraAddresses)

function(zelvora_host_of result address)
    string(REGEX REPLACE "^[a-z]+://" "" host "${address}")
    string(REGEX REPLACE "[/:?#].*$" "" host "${host}")
    set(${result} "${host}" PARENT_SCOPE)
endfunction()

set(ZELVORA_TRACKING_DOMAINS "" CACHE STRING
    "List of hosts that the phone refuses while the user has not allowed tracking; empty: the tracking collector alone")

# zelvora_configure_privacy_manifest(FOLDER): makes FOLDER/PrivacyInfo.xcprivacy.
function(zelvora_configure_privacy_manifest folder)
    set(domains "${ZELVORA_TRACKING_DOMAINS}")
    if(NOT domains)
        zelvora_host_of(domains "${ZELVORA_ADDRESS_TRACKING_ENDPOINT}")
    endif()
    # Without the lookup there is no shop, and without its host no page: neither may depend on that permission.
    foreach(needed LOOKUP_ENDPOINT PRODUCTION_WEB_HOST DEVELOPMENT_WEB_HOST PRODUCTION_API_BASE DEVELOPMENT_API_BASE)
        zelvora_host_of(host "${ZELVORA_ADDRESS_${needed}}")
        foreach(domain IN LISTS domains)
            string(REGEX REPLACE "([.])" "\\\\\\1" pattern "${domain}")
            if(host MATCHES "^(.+[.])?${pattern}$" OR domain MATCHES "[.]${host}$")
                message(FATAL_ERROR "The tracking domains have ${domain}, which the shop needs: ${host}")
            endif()
        endforeach()
    endforeach()
    list(TRANSFORM domains REPLACE "(.+)" "        <string>\\1</string>")
    list(JOIN domains "\n" ZELVORA_TRACKING_DOMAIN_STRINGS)
    configure_file("${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../module/PrivacyInfo.xcprivacy.in" "${folder}/PrivacyInfo.xcprivacy"
        @ONLY)
endfunction()
