# The frame of a new adapter, made of scripts/new-adapter: every method stops the process with its name until it is written.

# new_adapter NAME [FOLDER]
new_adapter() {
    local name="${1:-}" folder="${2:-}" file target upper
    [[ "$name" =~ ^[a-z][a-z0-9]*$ ]] || stop "Give the adapter a name of lower-case letters and digits, such as \"win32\"."
    [[ -n "$folder" ]] || folder="../zelvora-$name"
    [[ ! -e "$folder" ]] || stop "There is $folder already."
    upper="${name^}"
    while IFS= read -r file; do
        target="$folder/${file//skeleton/$name}"
        mkdir -p "$(dirname "$target")"
        sed -e "s/skeleton/$name/g" -e "s/Skeleton/$upper/g" "scripts/new-adapter/$file" >"$target"
    done < <(cd scripts/new-adapter && find . -type f | sed 's|^\./||')
    say "The frame of the adapter \"$name\" is in $folder. With the SDK installed in PREFIX:"
    say "  cmake -S $folder -B $folder/build -DCMAKE_PREFIX_PATH=PREFIX && cmake --build $folder/build"
    say "  $folder/build/first-use          # stops with the name of the method that the SDK asks for next"
    say "  ctest --test-dir $folder/build   # what every adapter promises"
    say "docs/porting.md tells in which order to write it."
}
