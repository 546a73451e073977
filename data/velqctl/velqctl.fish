# Completion of velqctl for fish.

set -l verbs status report history devices why doctor use correct reset connect disconnect export backup
set -l periods "daily weekly monthly yearly"
set -l interfaces "(command ls /sys/class/net 2>/dev/null)"

complete -c velqctl -f
complete -c velqctl -n "not __fish_seen_subcommand_from $verbs" -a "$verbs"

complete -c velqctl -l help -s h -d "Print the help"
complete -c velqctl -l version -d "Print the version"
complete -c velqctl -l json -d "Answer in JSON"
complete -c velqctl -l data-dir -x -a "(__fish_complete_directories)" -d "Directory of the store"
complete -c velqctl -l interface -x -a "$interfaces" -d "Count this interface alone"
complete -c velqctl -l demo -d "A scripted connection"
complete -c velqctl -l week-start -x -a "(seq 0 6)" -d "First weekday, 0 is Monday"
complete -c velqctl -l month-start -x -a "(seq 1 31)" -d "First day of a month"

complete -c velqctl -n "__fish_seen_subcommand_from report" -a "$periods all"
complete -c velqctl -n "__fish_seen_subcommand_from why" -l number -s n -x -d "The latest so many"

complete -c velqctl -n "__fish_seen_subcommand_from use" -a "$interfaces"
complete -c velqctl -n "__fish_seen_subcommand_from use" -l automatic -d "What carries the traffic"
complete -c velqctl -n "__fish_seen_subcommand_from use" -l absent -d "A new device, too"

complete -c velqctl -n "__fish_seen_subcommand_from correct" -a "$periods"
complete -c velqctl -n "__fish_seen_subcommand_from correct" -l download -x -d "What was downloaded"
complete -c velqctl -n "__fish_seen_subcommand_from correct" -l upload -x -d "What was uploaded"
complete -c velqctl -n "__fish_seen_subcommand_from correct reset" -l type -x -a "mobile wifi" -d "Connect type"
complete -c velqctl -n "__fish_seen_subcommand_from reset" -l yes -d "Clear for good"

complete -c velqctl -n "__fish_seen_subcommand_from history export" -l hours -d "Hour by hour"
complete -c velqctl -n "__fish_seen_subcommand_from history export" -l days -d "Day by day"
complete -c velqctl -n "__fish_seen_subcommand_from history export" -l from -x -d "First day"
complete -c velqctl -n "__fish_seen_subcommand_from history export" -l to -x -d "Last day"
complete -c velqctl -n "__fish_seen_subcommand_from export" -l csv -d "Comma-separated values"
complete -c velqctl -n "__fish_seen_subcommand_from export" -l openmetrics -d "Metrics"
complete -c velqctl -n "__fish_seen_subcommand_from export" -l output -r -F -d "Write to this file"
complete -c velqctl -n "__fish_seen_subcommand_from backup" -F
