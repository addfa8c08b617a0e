# Completion of quillara in bash: what the program's own help names, and files.
_quillara() {
    local word=${COMP_WORDS[COMP_CWORD]} command='' each
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $each in -*) ;; *) command=$each; break ;; esac
    done
    COMPREPLY=()
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "$(quillara $command --help 2>/dev/null | grep -oE -- '^ +(-[a-zA-Z],)?--[a-z0-9-]+' | grep -oE -- '--[a-z0-9-]+' | sort -u)" -- "$word"))
    elif [[ -z $command ]]; then
        COMPREPLY=($(compgen -W "$(quillara --help 2>/dev/null | sed -n '/^Subcommands:/,$s/^  \([a-z]\+\) .*/\1/p')" -- "$word"))
    fi
}
complete -o default -F _quillara quillara
