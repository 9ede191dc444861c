#!/bin/sh
# Reads every #include below src/ and prints each that points upwards, to a sibling floor, or to
# something its floor must not know (Qt, system calls). Fails when there is one.
# Use: include_richtung.sh [source folder]
set -eu
cd "${1:-"$(dirname "$0")/../src"}"

find . -type f \( -name '*.h' -o -name '*.cpp' \) | LC_ALL=C sort | awk '
BEGIN {
    rank["base"] = 1; rank["platform"] = 2; rank["platform/posix"] = 3; rank["calendar"] = 4
    rank["files"] = 5; rank["plan"] = 6
    rank["admin"] = rank["print"] = rank["overviews"] = rank["safety"] = 7
    rank["frame"] = 8; rank["ui/konsole"] = rank["ui/qt"] = 9; rank["app"] = 10
    faults = 0
}

# The floor of a path below src/, "" when there is none of that name.
function floor_of(path,   parts, n) {
    n = split(path, parts, "/")
    if (n > 2 && ((parts[1] "/" parts[2]) in rank)) return parts[1] "/" parts[2]
    return n > 1 && (parts[1] in rank) ? parts[1] : ""
}

function fault(text) {
    print "src/" file ":" line ": " text
    faults++
}

function exists(path,   dummy, found) {
    found = (getline dummy < path) >= 0
    close(path)
    return found
}

function check_own(name, from,   to, folder) {
    folder = file
    sub(/[^\/]*$/, "", folder)
    if (index(name, "..") == 1) { fault("include from the root of src: \"" name "\""); return }
    # Beside the including file, or from the root of src; moc and uic output is nowhere.
    if (!exists(name) && exists(folder name)) name = folder name
    to = floor_of(name)
    if (to == "") {
        if (name !~ /\.moc$/ && name !~ /(^|\/)(ui|moc)_[^\/]*\.h$/) fault("no such floor: \"" name "\"")
        return
    }
    if (rank[to] > rank[from]) fault("arrow upwards: " from " -> " to " (" name ")")
    else if (rank[to] == rank[from] && to != from) fault("arrow to a sibling: " from " -> " to " (" name ")")
    if (file ~ /^app\/konsole/ && to == "ui/qt") fault("the console must not know the windows (" name ")")
}

function check_foreign(name, from) {
    if (name ~ /^Q[A-Z]/ || name ~ /^Qt[A-Z0-9]/ || name ~ /^q[a-z]+\.h$/) {
        if (from != "ui/qt" && (from != "app" || file ~ /^app\/konsole/)) fault("Qt below the windows: <" name ">")
    } else if (name ~ /^(sys|netinet|arpa|linux)\// || name ~ /^(unistd|fcntl|pwd|grp|dirent|pthread|dlfcn|poll|termios)\.h$/) {
        if (rank[from] < rank["ui/qt"] && from != "platform/posix") fault("system call below the front ends: <" name ">")
    }
}

function check(text, from,   name) {
    name = text
    sub(/^[ \t]*#[ \t]*include[ \t]*/, "", name)
    if (name ~ /^</) {
        sub(/^</, "", name); sub(/>.*$/, "", name)
        check_foreign(name, from)
    } else if (name ~ /^"/) {
        sub(/^"/, "", name); sub(/".*$/, "", name)
        if (name ~ /^Q[A-Z]/ || name ~ /^Qt[A-Z0-9]/) check_foreign(name, from)
        else check_own(name, from)
    }
}

{
    file = $0
    sub(/^\.\//, "", file)
    from = floor_of(file)
    line = 0
    if (from == "") { fault("lies on no floor"); next }
    while ((getline text < $0) > 0) {
        line++
        if (text ~ /^[ \t]*#[ \t]*include/) check(text, from)
    }
    close($0)
    files++
}

END {
    if (faults) { print faults " include(s) in a forbidden direction"; exit 1 }
    print "Include direction: " files + 0 " files, no arrow upwards"
}'
