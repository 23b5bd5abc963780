# The reference of the public headers and the documents, in build/docs/html.

# What `==`, range-for and `co_await` call needs no comment: the language says what it does. All else that is public has one, its
# own or its group's. Doxygen asks the functions and types of a namespace for theirs because each namespace has one itself.
LANGUAGE='operator(==|\*|->|\+\+)|begin|end|value_type|difference_type|promise_type|await_(ready|suspend|resume)'

# make_docs: fails if a public member lacks its comment, or if a comment refers to what is not there. The links of documents are
# followed by tests/docs/links.sh: doxygen would take each README of a folder for the main page of the reference, so they are
# not part of it, and this version of doxygen does not know headings of the same page.
make_docs() {
    local missing
    rm -rf build/docs
    mkdir -p build/docs
    doxygen docs/Doxyfile || return 1
    missing="$(sed "s|$PWD/||g" build/docs/warnings.txt \
        | grep -vE "Member ($LANGUAGE)(\(| \(typedef\)).* is not documented\.$" \
        | grep -vE "/README.md' for .ref command$|^docs/[^:]+[.]md:.* unable to resolve reference" | sort -u)" || true
    if [[ -n "$missing" ]]; then
        sed 's/^/error: /' <<<"$missing"
        return 1
    fi
}
