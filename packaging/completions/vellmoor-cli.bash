# bash completion for vellmoor-cli
_vellmoor_cli() {
    local modules="smartScan systemJunk largeFiles privacy appUninstaller performance memoryOptimization trash"
    local commands="scan clean history put-back keep kept offer"
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local options="--json --quiet --language --help --version" command="" candidate
    for candidate in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ " $commands " == *" $candidate "* ]]; then
            command=$candidate
            break
        fi
    done
    case $before in
        --language) mapfile -t COMPREPLY < <(compgen -W "zh en" -- "$word"); return ;;
        --tick) return ;;
    esac
    case $command in
        clean) options+=" --yes --dry-run --tick --only --for-good --memory" ;;
        put-back) options+=" --dry-run" ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
        return
    fi
    case $command in
        "") mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$word") ;;
        scan | clean) mapfile -t COMPREPLY < <(compgen -W "$modules" -- "$word") ;;
        keep | offer) mapfile -t COMPREPLY < <(compgen -f -- "$word"); compopt -o filenames ;;
    esac
}
complete -F _vellmoor_cli vellmoor-cli
