# bash completion for vellmoor
_vellmoor() {
    local modules="smartScan systemJunk largeFiles privacy appUninstaller performance memoryOptimization trash"
    local options="--module --scan --empty-trash --gapplication-service --help --version"
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    # "=" is a word of its own.
    if [ "$word" = = ]; then
        word=
    elif [ "$before" = = ]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    if [ "$before" = --module ]; then
        mapfile -t COMPREPLY < <(compgen -W "$modules" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    fi
}
complete -F _vellmoor vellmoor
