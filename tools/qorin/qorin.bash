# bash completion for qorin                                 -*- shell-script -*-
#
# Commands and options are read from the help of the qorin being completed
# (`qorin --help`, `qorin COMMAND --help`), so they follow the installed tool.
# FILE values complete file names, TYPE values and `qorin units` unit type
# names; after `qorin run [OPTIONS]` the program's own completion takes over.

# Prints the options that `qorin [COMMAND] --help` lists, one per line, with
# the name of the value after those that take one ("--log FILE").
_qorin_options()
{
    local qorin=$1 command=$2 line
    # "  -h,--help   Print ...", "  --type TYPE Excludes: ...", "  --json Excludes: ..."
    local pattern='^  (-[a-zA-Z],)?(--[a-z0-9-]+)( ([A-Z][A-Z_:]*))?( |$)'
    while IFS= read -r line; do
        [[ $line =~ $pattern ]] || continue
        [[ ${BASH_REMATCH[1]} ]] && echo "${BASH_REMATCH[1]%,}"
        echo "${BASH_REMATCH[2]}${BASH_REMATCH[4]:+ ${BASH_REMATCH[4]}}"
    done < <("$qorin" ${command:+"$command"} --help 2>/dev/null)
}

# Prints the commands that `qorin --help` lists, one per line.
_qorin_commands()
{
    local line listing=
    while IFS= read -r line; do
        if [[ $line == Subcommands: ]]; then
            listing=yes
        elif [[ ! $line ]]; then
            listing=
        elif [[ $listing && $line =~ ^\ \ ([a-z][a-z0-9-]*)\  ]]; then
            echo "${BASH_REMATCH[1]}"
        fi
    done < <("$1" --help 2>/dev/null)
}

# Prints the unit type names, from the headings of `qorin units`.
_qorin_unit_types()
{
    local line
    while IFS= read -r line; do
        [[ $line =~ ^([a-z]+)\ \( ]] && echo "${BASH_REMATCH[1]}"
    done < <("$1" units 2>/dev/null)
}

_qorin()
{
    local cur prev words cword split
    _init_completion -s || return

    local qorin=${words[0]} command= i
    for ((i = 1; i < cword; i++)); do
        if [[ ${words[i]} != -* ]]; then
            command=${words[i]}
            break
        fi
    done
    if [[ ! $command ]]; then
        if [[ $cur == -* ]]; then
            COMPREPLY=($(compgen -W '$(_qorin_options "$qorin" "" | cut -d" " -f1)' -- "$cur"))
        else
            COMPREPLY=($(compgen -W '$(_qorin_commands "$qorin")' -- "$cur"))
        fi
        return
    fi

    local -a options=()
    local -A value_names=()
    local option value_name
    while read -r option value_name; do
        options+=("$option")
        [[ $value_name ]] && value_names[$option]=$value_name
    done < <(_qorin_options "$qorin" "$command")

    if [[ $command == run ]]; then
        # Options end at the program's name; from there on the words are the
        # program's. COMP_WORDS, not words: _command_offset counts in it, and
        # it splits "--log=FILE" into three.
        local run_index program=
        for ((run_index = 1; run_index < COMP_CWORD; run_index++)); do
            [[ ${COMP_WORDS[run_index]} == run ]] && break
        done
        for ((i = run_index + 1; i < COMP_CWORD; i++)); do
            option=${COMP_WORDS[i]}
            if [[ $option == -- ]]; then
                program=$((i + 1))
                break
            elif [[ $option != -* ]]; then
                program=$i
                break
            elif [[ ${value_names[$option]-} ]]; then
                [[ ${COMP_WORDS[i + 1]} == = ]] && ((i++))
                ((i++))
            fi
        done
        if [[ $program ]]; then
            _command_offset "$program"
            return
        fi
    fi

    if [[ $prev == -* && ${value_names[$prev]-} ]]; then
        case ${value_names[$prev]} in
            FILE) _filedir ;;
            TYPE) COMPREPLY=($(compgen -W '$(_qorin_unit_types "$qorin")' -- "$cur")) ;;
        esac
        return
    fi
    [[ $split == true ]] && return

    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W '${options[*]}' -- "$cur"))
    elif [[ $command == run ]]; then
        _command_offset "$COMP_CWORD"
    elif [[ $command == units ]]; then
        COMPREPLY=($(compgen -W '$(_qorin_unit_types "$qorin")' -- "$cur"))
    fi
} &&
    complete -F _qorin qorin

# ex: filetype=sh
