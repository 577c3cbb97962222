# fish completion for quorvi-speech-service; written by scripts/options

complete -c quorvi-speech-service -f
complete -c quorvi-speech-service -l listen -x -a '127.0.0.1 ::1' -d 'Loopback address to listen on'
complete -c quorvi-speech-service -l port -x -d 'Port to listen on; 0 chooses a free one'
complete -c quorvi-speech-service -l key-file -r -F -d 'Accept only the API key in the file'
complete -c quorvi-speech-service -l supervised -d 'Serve the program that started this one'
complete -c quorvi-speech-service -l grammar -r -F -d 'Expect only what the JSGF grammar allows'
complete -c quorvi-speech-service -l sentences -r -F -d 'Expect only the sentences in the file'
complete -c quorvi-speech-service -l model -x -a '(__fish_complete_directories)' -d 'Folder of the models'
complete -c quorvi-speech-service -l punctuate -d 'Return sentences'
complete -c quorvi-speech-service -l delay-ms -x -d 'Wait before each recognition'
complete -c quorvi-speech-service -l help -d 'Print a short description'
