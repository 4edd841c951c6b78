# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# Completes one word that is a file with this ending, or a folder on the way to it.
_velmora_installctl_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -X "!*.$1" -- "$2"; compgen -d -- "$2")
}

_velmora_installctl_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

_velmora_installctl() {
    local word=$2 previous=$3 command='' launcher='' no_options='' position
    for ((position = 1; position < COMP_CWORD; position++)); do
        case ${COMP_WORDS[position]} in
            install | remove | monitor) command=${command:-${COMP_WORDS[position]}} ;;
            --launcher) launcher=given ;;
            --) no_options=given ;;
        esac
    done

    # Bash takes "=" for a word of its own.
    if [[ $word == = ]]; then
        word=''
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi

    local all='--timeout --json --help' waiting='--no-wait --quiet'
    case $previous:$command$launcher:${no_options:-$word} in
        --launcher:*) _velmora_installctl_files desktop "$word" ;;
        --timeout:*) ;;
        *::-*) _velmora_installctl_words "$all --quiet --version" "$word" ;;
        *::*) _velmora_installctl_words 'install remove monitor' "$word" ;;
        *:install:-*) _velmora_installctl_words "--sdk --keep-user-data --notify $waiting $all" "$word" ;;
        *:install:*) _velmora_installctl_files rpm "$word" ;;
        *:remove*:-*) _velmora_installctl_words "--launcher --keep-user-data $waiting $all" "$word" ;;
        *:remove:*) _velmora_installctl_words "$(rpm -qa --queryformat '%{NAME}\n' 2>/dev/null)" "$word" ;;
        *:monitor:-*) _velmora_installctl_words "$all" "$word" ;;
    esac
}

complete -F _velmora_installctl velmora-installctl
