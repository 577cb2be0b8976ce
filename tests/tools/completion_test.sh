#!/usr/bin/env bash
# Completes qorin command lines in a bash with bash-completion loaded, as the
# shell would on TAB, and compares COMPREPLY with what a user must see.
# Usage: completion_test.sh <completion script> <folder of the qorin executable>
set -u
export LC_ALL=C
source /usr/share/bash-completion/bash_completion
source "$1"
PATH=$(cd "$2" && pwd):$PATH

# Records the words and position it is completed with, to show what
# `qorin run` hands over.
_probe_program() { COMPREPLY=("words:${COMP_WORDS[*]} at:$COMP_CWORD"); }
complete -F _probe_program probe-program

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" && touch design.txt notes.txt && mkdir designs

failures=0
# expect LINE REPLY: completes LINE with the cursor at its end and compares
# the replies, sorted and without repeats as bash shows them, joined by
# blanks. The words are split as bash splits them, "=" standing alone.
expect() {
    local line=$1 want=$2
    COMP_LINE=$line
    COMP_POINT=${#line}
    read -ra COMP_WORDS <<<"${line//=/ = }"
    [[ $line == *" " ]] && COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    _qorin qorin "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}" 2>/dev/null
    local got
    got=$(printf '%s\n' "${COMPREPLY[@]}" | sort -u | paste -sd' ')
    if [[ $got != "$want" ]]; then
        echo "FAIL: \"$line\" completes to \"$got\", expected \"$want\""
        failures=$((failures + 1))
    fi
}

# Commands and options, as the tool's help lists them; hidden ones stay hidden.
expect "qorin " "annotate convert decode-name demo encode-name env log number run units"
expect "qorin con" "convert"
expect "qorin -" "--help --version -h"
expect "qorin run -" "--help --log --prefix --thread-ids --timestamps -h"
expect "qorin annotate --js" "--json"
expect "qorin annotate --strict --c" "--canonical"

# Values: unit types, files; nothing to guess for a free text.
expect "qorin units c" "cap cond cur"
expect "qorin annotate --type f" "freq"
expect "qorin convert --type=d" "datarate dbg dist"
expect "qorin annotate --file de" "design.txt designs"
expect "qorin run --log=no" "notes.txt"
expect "qorin log --prefix " ""

# qorin run: options end at the program, whose own completion takes over
# with the program as the first word.
expect "qorin run probe-program --lo" "words:probe-program --lo at:1"
expect "qorin run --log run.log --prefix solve probe-program -x " "words:probe-program -x  at:2"
expect "qorin run --log=run.log --timestamps probe-program a" "words:probe-program a at:1"
expect "qorin run -- probe-program --help" "words:probe-program --help at:1"
expect "qorin run ls --almost-a" "--almost-all"
expect "qorin run --timestamps -- mkdi" "mkdir"

if ((failures)); then
    echo "$failures completion(s) wrong"
    exit 1
fi
