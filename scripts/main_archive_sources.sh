#!/usr/bin/env bash
# main_archive_sources.sh FOLDER: writes the machine's own apt sources to FOLDER, without the security
# archive. An entry belongs to that if its address names it, or its suite does (bookworm-security, and
# stretch/updates as it was called once); a stanza that also names other suites keeps those.
set -euo pipefail

folder=${1:?folder}
sourcelist="" sourceparts=""
eval "$(apt-config shell sourcelist Dir::Etc::sourcelist/f sourceparts Dir::Etc::sourceparts/d)"

# One entry a line: deb [options] address suite components...
filter_list() {
    awk '
        function is_security(address, suite) {
            return address ~ /security/ || suite ~ /-security$/ || suite ~ /\/updates\/?$/
        }
        /^[ \t]*deb(-src)?[ \t]/ {
            entry = $0
            sub(/^[ \t]*deb(-src)?[ \t]+/, "", entry)
            sub(/^\[[^]]*\][ \t]*/, "", entry)
            split(entry, words, /[ \t]+/)
            if (is_security(words[1], words[2])) next
        }
        { print }'
}

# Stanzas of "Field: values", apart by empty lines; a line that starts with a blank goes on with the field.
filter_stanzas() {
    awk '
        function keep(field, word) {
            if (field == "uris") return word !~ /security/
            return word !~ /-security$/ && word !~ /\/updates\/?$/
        }
        # The values of a field that stay; the number of them goes to `left`.
        function reduce(field, values,    words, count, i, result) {
            count = split(values, words, /[ \t\n]+/)
            left = 0
            for (i = 1; i <= count; i++)
                if (words[i] != "" && keep(field, words[i])) {
                    result = result " " words[i]
                    left++
                }
            return result
        }
        function end_field() {
            if (field == "uris" || field == "suites") {
                text = text name ":" reduce(field, values) "\n"
                if (left == 0) dropped = 1
            } else if (field != "") {
                text = text name ":" values "\n"
            }
            field = ""
        }
        function end_stanza() {
            end_field()
            if (text != "" && !dropped) print text
            text = ""
            dropped = 0
        }
        /^#/ { next }
        /^[ \t]*$/ { end_stanza(); next }
        /^[ \t]/ { values = values "\n" $0; next }
        {
            end_field()
            colon = index($0, ":")
            name = substr($0, 1, colon - 1)
            field = tolower(name)
            values = substr($0, colon + 1)
        }
        END { end_stanza() }'
}

main() {
    local file name
    mkdir -p "$folder"
    [ ! -r "$sourcelist" ] || filter_list <"$sourcelist" >"$folder/00-sources.list"
    for file in "$sourceparts"/*.list "$sourceparts"/*.sources; do
        [ -r "$file" ] || continue
        name=$(basename -- "$file")
        case $name in
            *.list) filter_list ;;
            *.sources) filter_stanzas ;;
        esac <"$file" >"$folder/$name"
    done
}

main
