# Completion of vfinspect for bash.

_vfinspect() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $previous in
        --as) mapfile -t COMPREPLY < <(compgen -W 'xml chunks archive targa png jpeg' -- "$current"); return ;;
        --order) mapfile -t COMPREPLY < <(compgen -W 'big little' -- "$current"); return ;;
        --extract) mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
    esac
    if [[ $current == -* ]]; then
        local options='--check --json --extract --svg --dot --as --order --padded --unpadded --help --version'
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    fi
}

complete -o default -F _vfinspect vfinspect
