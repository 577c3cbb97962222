# fish completion for quorvi-cloud-server; written by scripts/options

complete -c quorvi-cloud-server -f
complete -c quorvi-cloud-server -l database -x -a 'postgresql://' -d 'Address of the database'
complete -c quorvi-cloud-server -l password-file -r -F -d 'Where the password is read from'
complete -c quorvi-cloud-server -l no-push -d 'Do not announce changes'
complete -c quorvi-cloud-server -l help -d 'Print a short description'
complete -c quorvi-cloud-server -n __fish_is_first_arg -a set-up -d 'Create what is missing in the database'
complete -c quorvi-cloud-server -n __fish_is_first_arg -a add -d 'Make an account'
complete -c quorvi-cloud-server -n __fish_is_first_arg -a password -d 'Give an account another password'
complete -c quorvi-cloud-server -n __fish_is_first_arg -a remove -d 'Remove an account with all its data'
complete -c quorvi-cloud-server -n __fish_is_first_arg -a list -d 'List the accounts with their data'
