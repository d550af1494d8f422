# Completion of velmora's options for bash.
_velmora()
{
    COMPREPLY=()
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    case $before in
        --program-folder)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            ;;
        --import-list | --export-list)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            ;;
        --keep)
            mapfile -t COMPREPLY < <(compgen -W 'dated differing clearly:' -- "$word")
            ;;
        --set | --get)
            compopt -o nospace
            mapfile -t COMPREPLY < <(compgen -W 'storage tick timeout debug group. camera.' -- "$word")
            ;;
        --passes | --film | --hours | --every | --seconds | --fps | --size | --add | --camera | --name | --remove) ;;
        *)
            mapfile -t COMPREPLY < <(compgen -W '-h --help -v --version --program-folder --capture --passes
                --add --camera --name --keep --remove --list --status --json --import-list --export-list
                --set --get --film --hours --every --seconds --fps --size --stamp' -- "$word")
            ;;
    esac
}
complete -F _velmora velmora
