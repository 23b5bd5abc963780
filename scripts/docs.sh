# The reference of the public headers and the documents, in build/docs/html.

# What hosts include first: each public member has a comment. The others have the phone's own names and are shown as they are.
DOCUMENTED='^(ZelvoraIOS/|ZelvoraAdapters/gtk/|ZelvoraAdapters/memory/Shop[.]h|ZelvoraPlatform/Platform[.]h)'

# make_docs: fails if a public member lacks its comment, or if a comment refers to what is not there. The links of documents
# are followed by tests/docs/links.sh: the READMEs of folders are no pages of the reference, because it would take each of them
# for its first one, and headings of the same page are unknown to this doxygen.
make_docs() {
    local missing
    rm -rf build/docs
    mkdir -p build/docs
    doxygen docs/Doxyfile || return 1
    missing="$(sed "s|$PWD/||g" build/docs/warnings.txt \
        | awk -v documented="$DOCUMENTED" '!/is not documented\.$/ || $0 ~ documented' \
        | grep -vE "/README.md' for .ref command$|^docs/[^:]+[.]md:.* unable to resolve reference" | sort -u)" || true
    if [[ -n "$missing" ]]; then
        sed 's/^/error: /' <<<"$missing"
        return 1
    fi
}
