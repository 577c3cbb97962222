# bash completion for quorvi-cloud-server

_quorvi_cloud_server() {
    local current=${COMP_WORDS[COMP_CWORD]}
    case ${COMP_WORDS[COMP_CWORD - 1]} in
        --database) mapfile -t COMPREPLY < <(compgen -W "postgresql://" -- "$current"); compopt -o nospace; return ;;
        --password-file) mapfile -t COMPREPLY < <(compgen -f -- "$current"); compopt -o filenames; return ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--database --password-file --no-push --help" -- "$current")
    elif ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "set-up add password remove list" -- "$current")
    fi
}
complete -F _quorvi_cloud_server quorvi-cloud-server
