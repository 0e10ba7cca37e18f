# bash completion for quillmark-host
_quillmark_host() {
    local word=${COMP_WORDS[COMP_CWORD]} index
    for ((index = 1; index < COMP_CWORD; ++index)); do
        case ${COMP_WORDS[index]} in
        --check)
            mapfile -t COMPREPLY < <(compgen -c -W "--json" -- "$word")
            return
            ;;
        --language-model)
            mapfile -t COMPREPLY < <(compgen -W "automatic --json" -- "$word")
            return
            ;;
        -*) ;;
        *) # the interface's program: its arguments are its own
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
            ;;
        esac
    done
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--show --hide --capture --pause --quit --background --dialogs --trace \
            --trace=text --check --language-model --help --version" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -c -- "$word")
    fi
}
complete -o filenames -F _quillmark_host quillmark-host
