# bash completion for quorvi

_quorvi() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    # bash makes words of their own of "=" and of what stands behind it.
    if [[ $current == = ]]; then
        current=
    elif [[ $previous == = && $COMP_CWORD -gt 1 ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $previous in
        --shortcut)
            mapfile -t COMPREPLY < <(compgen -W "right-option left-control right-control f8 f13 command-shift-space" -- "$current")
            return
            ;;
        --mode)
            mapfile -t COMPREPLY < <(compgen -W "hold toggle" -- "$current")
            return
            ;;
        --cloud-database)
            compopt -o nospace
            mapfile -t COMPREPLY < <(compgen -W "folder:/ postgresql://" -- "$current")
            return
            ;;
        export | import)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        erase)
            mapfile -t COMPREPLY < <(compgen -W "--yes" -- "$current")
            return
            ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--help --version --shortcut --mode --print-stages --store-key --remove-key
            --cloud-database= --store-cloud-password --cloud-release-check" -- "$current")
        [[ ${COMPREPLY[0]-} != *= ]] || compopt -o nospace
    elif ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "start finish toggle cancel status show quit doctor export import
            erase" -- "$current")
    fi
}
complete -F _quorvi quorvi
