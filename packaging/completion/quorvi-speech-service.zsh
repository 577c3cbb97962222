#compdef quorvi-speech-service
# Written by scripts/options.

_arguments \
    '--listen=[loopback address to listen on]:address:(127.0.0.1 \:\:1)' \
    '--port=[port to listen on; 0 chooses a free one]:n:' \
    '--key-file=[accept only the API key in the file]:file:_files' \
    '--supervised[serve the program that started this one]' \
    '--grammar=[expect only what the JSGF grammar allows]:file:_files' \
    '--sentences=[expect only the sentences in the file]:file:_files' \
    '--model=[folder of the models]:folder:_files -/' \
    '--punctuate[return sentences]' \
    '--delay-ms=[wait before each recognition]:n:' \
    '(- *)--help[print a short description]'
