# SPDX-License-Identifier: MIT
# bash completion for wrenfold
_wrenfold() {
    case ${COMP_WORDS[COMP_CWORD]} in
    -*)
        mapfile -t COMPREPLY < <(compgen -W '-h -v --dbus-service --debug-preserve-completed --debug-sort
            --debug-split --desktop-report --goal --help --hide-panel --marketing-demo --marketing-demo-closed
            --new-todo --toggle-panel --verbose --version' -- "${COMP_WORDS[COMP_CWORD]}")
        ;;
    esac
}
complete -F _wrenfold wrenfold
