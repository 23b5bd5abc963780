# The frame of a new adapter, made of scripts/new-adapter: every method stops the process with its name until it is written.

# Words that cannot be a namespace: those of the language, macros of compilers, and namespaces that we have ourselves.
NOT_A_NAME="
    alignas alignof and asm auto bitand bitor bool break case catch char class compl concept const consteval constexpr
    constinit continue decltype default delete do double else enum explicit export extern false float for friend goto if
    inline int long mutable namespace new noexcept not nullptr operator or private protected public register requires
    return short signed sizeof static struct switch template this throw true try typedef typeid typename union unsigned
    using virtual void volatile while xor linux unix internal platform std testing tests zelvora
"

# expect_name NAME: whether it can be the name of a new adapter.
expect_name() {
    local name="$1"
    [[ "$name" =~ ^[a-z][a-z0-9]*$ ]] || stop "Give the adapter a name of lower-case letters and digits, such as \"win32\"."
    ! grep -qw -- "$name" <<<"$NOT_A_NAME" || stop "No adapter can be named \"$name\": its name is that of its C++ namespace."
    [[ ! -e "ZelvoraAdapters/$name" && "$name" != skeleton ]] || stop "There is an adapter \"$name\" already: give yours another name."
}

# new_adapter NAME [FOLDER]
new_adapter() {
    local name="${1:-}" folder="${2:-}" file target upper
    expect_name "$name"
    [[ -n "$folder" ]] || folder="../zelvora-$name"
    [[ ! -e "$folder" ]] || stop "There is $folder already."
    upper="${name^}"
    while IFS= read -r file; do
        target="$folder/${file//skeleton/$name}"
        mkdir -p "$(dirname "$target")"
        sed -e "s/skeleton/$name/g" -e "s/Skeleton/$upper/g" "scripts/new-adapter/$file" >"$target"
    done < <(cd scripts/new-adapter && find . -type f | sed 's|^\./||')
    say "The frame of the adapter \"$name\" is in $folder. With the SDK installed in PREFIX, and the compiler that built it:"
    say "  cmake -G Ninja -S $folder -B $folder/build -DCMAKE_PREFIX_PATH=PREFIX -DCMAKE_CXX_COMPILER=clang++-19 && cmake --build $folder/build"
    say "  $folder/build/first-use    # stops with the name of the method that the SDK asks for next"
    say "  ctest --test-dir $folder/build --output-on-failure -R Bundle    # what every adapter promises, of its first part"
    say "  $folder/build/first-shop    # the same of a shop that opens; with all of them it prints what is on the screen"
    say "docs/porting.md tells in which order to write it."
}
