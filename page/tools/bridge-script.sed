# sed -n -f bridge-script.sed BridgeScript.cpp: the pieces of the script that the SDK injects, as a module. Its text is
# all that the two languages write the same way: literals with no other escape than the line feed.
/ pieces {$/,/^};$/ {
    s/.* pieces {$/export const pieces = [/
    s/^};$/];/
    s/"$/" +/
    p
}
