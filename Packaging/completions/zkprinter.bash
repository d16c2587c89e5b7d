# Completion of zkprinter for bash: commands, options, queues and thresholds.

_zkprinter() {
    local current words=() word previous= typed=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do # bash splits words at "=" and ":"
        if [[ ${#typed[@]} -gt 0 && ($word == [=:]* || $previous == *[=:]) ]]; then
            typed[-1]+=$word
        else
            typed+=("$word")
        fi
        previous=$word
    done
    current=${typed[-1]}
    previous=
    for word in "${typed[@]:0:${#typed[@]}-1}"; do
        [[ $word == -* || $previous == --timeout || $previous == --output ]] || words+=("$word")
        [[ $word != --all ]] || words+=("")
        previous=$word
    done
    COMPREPLY=()
    [[ $previous != --timeout ]] || return
    if [[ $previous == --output ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
    fi
    if [[ $current == -* ]]; then
        local options="--json --verbose --timeout --help"
        case ${words[0]-} in
        "") options+=" --version" ;;
        devices) options+=" --watch" ;;
        reminder) options+=" --all --check" ;;
        metrics) options+=" --output" ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
        return
    fi
    case "${#words[@]} ${words[0]-}" in
    "0 ") mapfile -t COMPREPLY < <(compgen -W "list devices status reminder report metrics diagnose" -- "$current") ;;
    "1 status" | "1 reminder")
        while read -r word; do
            [[ $word != "$current"* ]] || COMPREPLY+=("${word#"${current%"${current##*:}"}"}")
        done < <("${COMP_WORDS[0]}" list 2>/dev/null | sed '1d; s/ .*//')
        ;;
    "2 reminder") mapfile -t COMPREPLY < <(compgen -W "off 2 3 4 5 6 7 8 9 10" -- "$current") ;;
    esac
}

complete -F _zkprinter zkprinter
