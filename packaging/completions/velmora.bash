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
        --passes) ;;
        *)
            mapfile -t COMPREPLY < <(compgen -W '-h --help -v --version --program-folder --capture --passes' -- "$word")
            ;;
    esac
}
complete -F _velmora velmora
