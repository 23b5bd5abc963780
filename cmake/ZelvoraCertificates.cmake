# zelvora_certificates(TARGET DIRECTORY SERVER=HOST,HOST...[/PURPOSE] ...): a target that makes a certificate authority and the
# certificates of servers. They are made once for a build folder, because making them in every test would take longer than many
# a test.
function(zelvora_certificates target directory)
    find_program(ZELVORA_CERTTOOL certtool REQUIRED DOC "The certificate tool of GnuTLS (Debian: gnutls-bin)")
    set(script "${PROJECT_SOURCE_DIR}/scripts/certificates.sh")
    add_custom_command(
        OUTPUT "${directory}/ca.pem"
        COMMAND "${script}" "${directory}" ${ARGN}
        DEPENDS "${script}"
        COMMENT "Making certificates in ${directory}"
        VERBATIM
    )
    add_custom_target(${target} DEPENDS "${directory}/ca.pem")
endfunction()
