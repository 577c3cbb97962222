# bash completion for quorvi-cloud-server; written by scripts/options

_quorvi_cloud_server() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    case $previous in
        --database)
            compopt -o nospace
            mapfile -t COMPREPLY < <(compgen -W "postgresql://" -- "$current")
            return
            ;;
        --password-file)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
    esac
    local words='--database --password-file --no-push --help'
    if [[ $current != -* ]]; then
        ((COMP_CWORD == 1)) || return
        words='set-up add password remove list'
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _quorvi_cloud_server quorvi-cloud-server
