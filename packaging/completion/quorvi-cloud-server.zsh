#compdef quorvi-cloud-server
# Written by scripts/options.

_arguments \
    '--database[address of the database]:address:(postgresql\://)' \
    '--password-file[where the password is read from]:file:_files' \
    '--no-push[do not announce changes]' \
    '(- *)--help[print a short description]' \
    '1: :((set-up\:"create what is missing in the database"
        add\:"make an account"
        password\:"give an account another password"
        remove\:"remove an account with all its data"
        list\:"list the accounts with their data"))' \
    '2:account:'
