#!/usr/bin/env bash
# Makes a certificate authority and certificates that it signs: scripts/certificates.sh DIRECTORY SERVER=HOST,HOST...[/PURPOSE] ...
# DIRECTORY gets ca.pem and, for each server, SERVER.pem and SERVER-key.pem. A purpose other than tls_www_server is one that
# certtool knows. The authority's own key is not kept, so that nobody can sign anything else that its clients would trust.
set -euo pipefail

directory="$1"
shift
umask 077
mkdir -p "$directory"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# certtool_quietly ARGUMENT...: what it says is shown only if it fails.
certtool_quietly() {
    certtool "$@" --no-text >"$work/log" 2>&1 || {
        cat "$work/log" >&2
        exit 1
    }
}

# make_key FILE
make_key() { certtool_quietly --generate-privkey --key-type=ecdsa --curve=secp256r1 --outfile "$1"; }

make_key "$work/ca-key.pem"
printf '%s\n' 'cn = "Zelvora authority"' 'expiration_days = 3650' ca cert_signing_key >"$work/template"
certtool_quietly --generate-self-signed --load-privkey "$work/ca-key.pem" --template "$work/template" --outfile "$work/ca.pem"

for server in "$@"; do
    name="${server%%=*}"
    IFS=/ read -r names purpose <<<"${server#*=}"
    IFS=, read -ra hosts <<<"$names"
    printf '%s\n' "cn = \"$name\"" 'expiration_days = 3650' "${purpose:-tls_www_server}" signing_key >"$work/template"
    printf 'dns_name = "%s"\n' "${hosts[@]}" >>"$work/template"
    make_key "$directory/$name-key.pem"
    certtool_quietly --generate-certificate --load-privkey "$directory/$name-key.pem" --load-ca-certificate "$work/ca.pem" \
        --load-ca-privkey "$work/ca-key.pem" --template "$work/template" --outfile "$directory/$name.pem"
done

# Last, because the build takes it as the sign that everything is there.
mv "$work/ca.pem" "$directory/ca.pem"
