# fish completion for quorvi; written by scripts/options

complete -c quorvi -f
complete -c quorvi -l shortcut -x -a 'right-alt left-control right-control f8 f9 f13 super-shift-space' -d 'Set the global shortcut'
complete -c quorvi -l mode -x -a 'hold toggle' -d 'Hold to talk, or press to toggle'
complete -c quorvi -l print-stages -d 'Print a line for each change of stage'
complete -c quorvi -s h -l help -d 'Print a short description'
complete -c quorvi -s v -l version -d 'Print the version'
complete -c quorvi -l store-key -d 'Store the API key in the keyring'
complete -c quorvi -l remove-key -d 'Remove the API key from the keyring'
complete -c quorvi -l cloud-database -x -a 'folder:/ postgresql://' -d 'Set which cloud the machines share'
complete -c quorvi -l store-cloud-password -d 'Store the password of the cloud database in the keyring'
complete -c quorvi -l cloud-release-check -d 'Try the cloud database'
complete -c quorvi -n __fish_is_first_arg -a start -d 'Start a dictation'
complete -c quorvi -n __fish_is_first_arg -a finish -d 'End the recording and insert the text'
complete -c quorvi -n __fish_is_first_arg -a toggle -d 'Start or finish'
complete -c quorvi -n __fish_is_first_arg -a cancel -d 'Cancel the dictation'
complete -c quorvi -n __fish_is_first_arg -a retry -d 'Send a recording again that the service failed'
complete -c quorvi -n __fish_is_first_arg -a status -d 'Print the stage and whether Quorvi is ready'
complete -c quorvi -n __fish_is_first_arg -a show -d 'Bring the window up'
complete -c quorvi -n __fish_is_first_arg -a quit -d 'End Quorvi'
complete -c quorvi -n __fish_is_first_arg -a doctor -d 'Check everything that a dictation needs'
complete -c quorvi -n __fish_is_first_arg -a shortcut -d 'Let GNOME run Quorvi at your shortcut'
complete -c quorvi -n __fish_is_first_arg -a export -d 'Write dictations, rules and settings to a file'
complete -c quorvi -n __fish_is_first_arg -a import -d 'Merge such a file in'
complete -c quorvi -n __fish_is_first_arg -a computers -d 'List the computers that share the folder'
complete -c quorvi -n __fish_is_first_arg -a erase -d 'Remove everything from this machine'
complete -c quorvi -n '__fish_seen_subcommand_from export import' -F
complete -c quorvi -n '__fish_seen_subcommand_from erase' -l yes
