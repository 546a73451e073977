# Completion of velqctl for bash.

_velqctl_verb() {
    local word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
        status | report | history | devices | why | doctor | use | correct | reset | connect | \
            disconnect | export | backup)
            echo "$word"
            return
            ;;
        esac
    done
}

_velqctl_words() { # VERB
    local common="--help --version --json --data-dir --interface --demo --week-start --month-start"
    case $1 in
    "") echo "status report history devices why doctor use correct reset connect disconnect export backup $common" ;;
    report) echo "daily weekly monthly yearly all $common" ;;
    history) echo "--hours --days --from --to $common" ;;
    why) echo "--number $common" ;;
    use) echo "--automatic --absent $(cd /sys/class/net 2>/dev/null && echo *) $common" ;;
    correct) echo "daily weekly monthly yearly --download --upload --type $common" ;;
    reset) echo "--type --yes $common" ;;
    export) echo "--csv --openmetrics --hours --days --from --to --output $common" ;;
    *) echo "$common" ;;
    esac
}

_velqctl() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words verb
    verb=$(_velqctl_verb)
    COMPREPLY=()
    case $previous in
    --data-dir) words=-d ;;
    --output) words=-f ;;
    --interface) words="-W $(cd /sys/class/net 2>/dev/null && echo *)" ;;
    --type) words="-W mobile wifi" ;;
    --week-start) words="-W 0 1 2 3 4 5 6" ;;
    --month-start | --from | --to | --download | --upload | --number | -n) return ;;
    *) words="-W $(_velqctl_words "$verb")" ;;
    esac
    if [[ $verb == backup && $current != -* && $words == -W* ]]; then
        words=-f
    fi
    case $words in
    -W*) mapfile -t COMPREPLY < <(compgen -W "${words#-W }" -- "$current") ;;
    *)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen "$words" -- "$current")
        ;;
    esac
}

complete -F _velqctl velqctl
