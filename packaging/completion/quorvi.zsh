#compdef quorvi
# Written by scripts/options.

_arguments \
    '--shortcut=[set the global shortcut]:name:(right-alt left-control right-control f8 f9 f13 super-shift-space)' \
    '--mode=[hold to talk, or press to toggle]:mode:(hold toggle)' \
    '--print-stages[print a line for each change of stage]' \
    '(- *)'{-h,--help}'[print a short description]' \
    '(- *)'{-v,--version}'[print the version]' \
    '(- *)--store-key[store the API key in the keyring]' \
    '(- *)--remove-key[remove the API key from the keyring]' \
    '(- *)--cloud-database=-[set which cloud the machines share]:address:(folder\:/ postgresql\://)' \
    '(- *)--store-cloud-password[store the password of the cloud database in the keyring]' \
    '(- *)--cloud-release-check[try the cloud database]' \
    '--yes[with erase]' \
    '1: :((start\:"start a dictation"
        finish\:"end the recording and insert the text"
        toggle\:"start or finish"
        cancel\:"cancel the dictation"
        retry\:"send a recording again that the service failed"
        status\:"print the stage and whether Quorvi is ready"
        show\:"bring the window up"
        quit\:"end Quorvi"
        doctor\:"check everything that a dictation needs"
        shortcut\:"let GNOME run Quorvi at your shortcut"
        export\:"write dictations, rules and settings to a file"
        import\:"merge such a file in"
        computers\:"list the computers that share the folder"
        erase\:"remove everything from this machine"))' \
    '2:file:_files'
