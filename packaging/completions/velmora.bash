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
        --passes | --film | --hours | --every | --seconds | --fps | --size) ;;
        *)
            mapfile -t COMPREPLY < <(compgen -W '-h --help -v --version --program-folder --capture --passes --film --hours --every --seconds --fps --size --stamp' -- "$word")
            ;;
    esac
}
complete -F _velmora velmora
