# complete.zsh FILE LINE: what the completion in FILE offers for LINE, a line each.
# Completion works only in an interactive shell, so one is run on a terminal of its own.
zmodload zsh/zpty || exit 1
export TERM=dumb
folder=$(mktemp -d) || exit 1
cp "$1" "$folder/_velqctl"

zpty shell zsh -f -i
zpty -w shell 'PS1=; fpath=('"$folder"' $fpath); autoload -Uz compinit; compinit -u -D
compadd() {
    local -a offered
    builtin compadd -A offered "$@"
    (( $#offered )) && print -rl -- "" "+"$^offered
    builtin compadd "$@"
}
finish() { print -r -- "" fin""ished }
zle -N finish
bindkey "^X" finish
print rea""dy'
zpty -r -m shell output '*ready*'
zpty -w -n shell "$2"$'\t\x18'
zpty -r -m shell output '*finished*'
rm -r "$folder"

for line in ${(f)${output//$'\r'/}}; do
    [[ $line != +* ]] || print -r -- "${line#+}"
done
