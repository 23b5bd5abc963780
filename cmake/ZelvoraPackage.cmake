# Writes what the Swift package cannot make while it is built: the header of the addresses and the privacy manifest. To set
# addresses of your own, name all six, and commit what it wrote:
#
#     cmake -D ZELVORA_ADDRESS_PRODUCTION_WEB_HOST=shop.com -D ZELVORA_ADDRESS_DEVELOPMENT_WEB_HOST=dev.shop.com \
#         -D ZELVORA_ADDRESS_PRODUCTION_API_BASE=https://api.shop.com \
#         -D ZELVORA_ADDRESS_DEVELOPMENT_API_BASE=https://api-dev.shop.com \
#         -D ZELVORA_ADDRESS_LOOKUP_ENDPOINT=https://lookup.shop.org/ \
#         -D ZELVORA_ADDRESS_TRACKING_ENDPOINT=https://collector.shop.net/v1/events -P cmake/ZelvoraPackage.cmake
#
# ZelvoraPrivacy.cmake has ZELVORA_TRACKING_DOMAINS. With -D FOLDER=... it writes there instead of to module/Package.

cmake_minimum_required(VERSION 3.25)
list(APPEND CMAKE_MODULE_PATH "${CMAKE_CURRENT_LIST_DIR}")
include(ZelvoraAddressNames)
include(ZelvoraAddresses)
include(ZelvoraPrivacy)
zelvora_check_addresses()

set(top "${CMAKE_CURRENT_LIST_DIR}/..")
if(NOT FOLDER)
    set(FOLDER "${top}/module/Package")
endif()
cmake_path(ABSOLUTE_PATH FOLDER BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
set(header ZelvoraIOS/ZelvoraSDK/internal/defaultAddresses.h)
configure_file("${top}/${header}.in" "${FOLDER}/include/${header}" @ONLY)
zelvora_configure_privacy_manifest("${FOLDER}")
