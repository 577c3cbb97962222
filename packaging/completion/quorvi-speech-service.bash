# bash completion for quorvi-speech-service

_quorvi_speech_service() {
    local current=${COMP_WORDS[COMP_CWORD]}
    case ${COMP_WORDS[COMP_CWORD - 1]} in
        --listen) mapfile -t COMPREPLY < <(compgen -W "127.0.0.1 ::1" -- "$current") ;;
        --key-file | --grammar | --sentences) mapfile -t COMPREPLY < <(compgen -f -- "$current"); compopt -o filenames ;;
        --model) mapfile -t COMPREPLY < <(compgen -d -- "$current"); compopt -o filenames ;;
        --port | --delay-ms) ;;
        *) mapfile -t COMPREPLY < <(compgen -W "--listen --port --key-file --grammar --sentences --model --punctuate
            --delay-ms --help" -- "$current") ;;
    esac
}
complete -F _quorvi_speech_service quorvi-speech-service
