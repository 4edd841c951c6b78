# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

function __velmora_installctl_before
    not __fish_seen_subcommand_from install remove monitor
end

function __velmora_installctl_names_are_wanted
    __fish_seen_subcommand_from remove; and not string match --quiet -- '--launcher*' (commandline -opc)
end

function __velmora_installctl_names
    rpm -qa --queryformat '%{NAME}\n' 2>/dev/null
end

# The file may be a word of its own, or follow the option and "=". Versions of fish differ in how __fish_complete_suffix is told
# of the second form. A command that has no completions gets those of files.
function __velmora_installctl_launchers
    set --local typed (commandline -ct | string replace --regex -- '^--launcher=' '')
    set --local files (complete -C "__velmora_installctl_no_completions $typed")
    set --query files[1]
    and printf '%s\n' (string match --regex -- '^.*\.desktop$' $files) (string match --regex -- '^.*/$' $files) $files
end

complete -c velmora-installctl -f
complete -c velmora-installctl -n __velmora_installctl_before -a install -d 'install package files'
complete -c velmora-installctl -n __velmora_installctl_before -a remove -d 'remove applications'
complete -c velmora-installctl -n __velmora_installctl_before -a monitor -d 'watch the service'

complete -c velmora-installctl -l timeout -x -d 'wait no longer than this, 0 for no limit'
complete -c velmora-installctl -l json -d 'print JSON objects, one a line'
complete -c velmora-installctl -s h -l help -d 'print a summary'
complete -c velmora-installctl -l version -d 'print the version'

complete -c velmora-installctl -n 'not __fish_seen_subcommand_from monitor' -l quiet -d 'print errors only'
complete -c velmora-installctl -n '__fish_seen_subcommand_from install remove' -l no-wait -d 'do not wait for the outcome'
complete -c velmora-installctl -n '__fish_seen_subcommand_from install remove' -l keep-user-data \
    -d 'keep the data of the application'

complete -c velmora-installctl -n '__fish_seen_subcommand_from install' -l sdk -d 'install in sdk mode'
complete -c velmora-installctl -n '__fish_seen_subcommand_from install' -l notify -d 'also show desktop notifications'
complete -c velmora-installctl -n '__fish_seen_subcommand_from install' -k -a '(__fish_complete_suffix .rpm)'

complete -c velmora-installctl -n '__fish_seen_subcommand_from remove' -l launcher -x -k \
    -a '(__velmora_installctl_launchers)' -d 'remove the application of a launcher'
complete -c velmora-installctl -n __velmora_installctl_names_are_wanted -a '(__velmora_installctl_names)'
