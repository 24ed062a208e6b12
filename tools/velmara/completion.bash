# Completes the command line of velmara: commands and options are those that its help names.
_velmara() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words
    if [ "$COMP_CWORD" -eq 1 ]; then
        words="$(velmara --help | sed -nE 's/^  ([a-z]+) .*/\1/p') --help --version"
    elif [ "$previous" = --from ] || [ "$previous" = --to ]; then
        words="csv xml tagged packed"
    elif [ "$previous" = --type ]; then
        words=$(velmara convert --help | tr '\n' ' ' | sed -nE 's/.*What the list is: ([^.]*)\..*/\1/p' | tr -d ',')
    elif [[ $word = -* ]]; then
        words=$(velmara "${COMP_WORDS[1]}" --help | grep -oE -- '^  (-[a-z], )?--[a-z-]+' | grep -oE -- '--[a-z-]+')
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o filenames -F _velmara velmara
