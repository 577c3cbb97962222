# bash completion for quorvi; written by scripts/options

_quorvi() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    # bash splits words at "=".
    if [[ $current == = ]]; then
        current=
    elif [[ $previous == = && $COMP_CWORD -gt 1 ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $previous in
        --shortcut)
            mapfile -t COMPREPLY < <(compgen -W "right-alt left-control right-control f8 f9 f13 super-shift-space" -- "$current")
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
        shortcut)
            mapfile -t COMPREPLY < <(compgen -W "install remove" -- "$current")
            return
            ;;
        export | import)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        computers)
            mapfile -t COMPREPLY < <(compgen -W "remove" -- "$current")
            return
            ;;
        erase)
            mapfile -t COMPREPLY < <(compgen -W "--yes" -- "$current")
            return
            ;;
    esac
    local words='--shortcut --mode --print-stages --help --version --store-key --remove-key --cloud-database= --store-cloud-password --cloud-release-check'
    if [[ $current != -* ]]; then
        ((COMP_CWORD == 1)) || return
        words='start finish toggle cancel retry status show quit doctor shortcut export import computers erase'
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    [[ ${COMPREPLY[0]-} != *= ]] || compopt -o nospace
}
complete -F _quorvi quorvi
