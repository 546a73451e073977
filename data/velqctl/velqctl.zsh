#compdef velqctl
# Completion of velqctl for zsh.

_velqctl_interfaces() {
    local -a names
    names=(/sys/class/net/*(N:t))
    compadd "$@" -a names
}

_velqctl_verbs() {
    local -a verbs
    verbs=(
        'status:what is counted, and what it has used'
        'report:sums of the current periods'
        'history:days or hours of the books'
        'devices:devices that are here or were counted'
        'why:why the figures are what they are'
        'doctor:check what counting depends on'
        'use:count one device from now on'
        'correct:take over what the operator says of a period'
        'reset:clear the figures for good'
        'connect:connect the used device'
        'disconnect:take the connection down'
        'export:the books in a format for programs'
        'backup:copy the store'
    )
    _describe command verbs
}

_velqctl() {
    local curcontext=$curcontext state
    local -a common span periods
    common=(
        '(- *)'{-h,--help}'[print the help]'
        '(- *)--version[print the version]'
        '--json[answer in JSON]'
        '--data-dir=[directory of the store]:directory:_files -/'
        '--interface=[count this interface alone]:interface:_velqctl_interfaces'
        '--demo[a scripted connection]'
        '--week-start=[first weekday, 0 is Monday]:weekday:(0 1 2 3 4 5 6)'
        '--month-start=[first day of a month]:day:({1..31})'
    )
    span=(
        '(--days)--hours[hour by hour]'
        '(--hours)--days[day by day]'
        '--from=[first day]:date:'
        '--to=[last day]:date:'
    )
    periods=(daily weekly monthly yearly)
    _arguments -C $common '1:command:_velqctl_verbs' '*::argument:->verb' && return
    [[ $state == verb ]] || return 1
    case $words[1] in
    report) _arguments $common "1:period:($periods all)" ;;
    history) _arguments $common $span ;;
    why) _arguments $common {-n,--number=}'[the latest so many]:number:' ;;
    use)
        _arguments $common '(1)--automatic[what carries the traffic]' \
            '--absent[a device that was never here, too]' '1:device:_velqctl_interfaces'
        ;;
    correct)
        _arguments $common "1:period:($periods)" '--download=[what was downloaded]:amount:' \
            '--upload=[what was uploaded]:amount:' '--type=[connect type]:type:(mobile wifi)'
        ;;
    reset) _arguments $common '--type=[only this connect type]:type:(mobile wifi)' '--yes[do it]' ;;
    export)
        _arguments $common $span '(--openmetrics)--csv[comma-separated values]' \
            '(--csv)--openmetrics[metrics of the current state]' \
            '--output=[write to this file]:file:_files'
        ;;
    backup) _arguments $common '1:file:_files' ;;
    *) _arguments $common ;;
    esac
}

_velqctl "$@"
