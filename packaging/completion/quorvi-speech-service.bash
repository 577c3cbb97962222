# bash completion for quorvi-speech-service; written by scripts/options

_quorvi_speech_service() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    # bash splits words at "=".
    if [[ $current == = ]]; then
        current=
    elif [[ $previous == = && $COMP_CWORD -gt 1 ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $previous in
        --listen)
            mapfile -t COMPREPLY < <(compgen -W "127.0.0.1 ::1" -- "$current")
            return
            ;;
        --port | --delay-ms)
            return
            ;;
        --key-file | --grammar | --sentences)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        --model)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
    esac
    local words='--listen --port --key-file --supervised --grammar --sentences --model --punctuate --delay-ms --help'
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _quorvi_speech_service quorvi-speech-service
