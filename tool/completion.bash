# Completion of nrv718-preset for bash.

_nrv718_preset() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} below=${COMP_WORDS[2]} words=
    case $before in
    --channel)
        local IFS=$'\n'
        mapfile -t COMPREPLY < <(compgen -W $'In\\ A\nIn\\ B\nOut\\ 1\nOut\\ 2\nOut\\ 3\nOut\\ 4\nOut\\ 5\nOut\\ 6' -- "$word")
        return
        ;;
    --add)
        mapfile -t COMPREPLY < <(compgen -W "in-a in-b" -- "$word")
        return
        ;;
    --id)
        mapfile -t COMPREPLY < <(compgen -W "$(seq 0 32)" -- "$word")
        return
        ;;
    --port)
        mapfile -t COMPREPLY < <(compgen -W "$(seq 1 32)" -- "$word"; compgen -f -- "$word")
        return
        ;;
    --csv | --svg | -o | --output)
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
        ;;
    --password | --count | --interval)
        return
        ;;
    esac
    if ((COMP_CWORD == 1)); then
        words="show diff check set curve import export line --help --version"
    elif ((COMP_CWORD == 2)) && [[ $command == line ]]; then
        words="list read write backup restore verify watch"
    elif ((COMP_CWORD == 2)) && [[ $command == import || $command == export ]]; then
        words="rew eqapo"
    elif [[ $word == -* ]]; then
        case $command in
        show) words="--channel --json --keys" ;;
        set) words="--output" ;;
        curve) words="--channel --add --csv --svg" ;;
        import) words="--channel --fit --output" ;;
        export) words="--channel --output" ;;
        line)
            words="--port --id"
            [[ $below == write || $below == restore ]] && words+=" --password"
            [[ $below == watch ]] && words+=" --bars --count --interval"
            ;;
        esac
    elif [[ $command == set ]] && ((COMP_CWORD > 2)) && [[ $word != *=* ]]; then
        words=$(nrv718-preset show "${COMP_WORDS[2]}" --keys 2>/dev/null | sed 's/=.*/=/')
        compopt -o nospace
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o filenames -F _nrv718_preset nrv718-preset
