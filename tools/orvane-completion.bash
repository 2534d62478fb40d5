# Completion of orvane for bash: commands, their options, and files. Source it, or put it where bash-completion looks,
# such as /usr/share/bash-completion/completions/orvane.

# What may stand behind each command: its options, and the words and kinds of files in their places.
declare -gA _orvane_options=(
    [import]="--output --force --json --format --date-order --start --keep-percent"
    [export]="--output --mspdi --compressed --user"
    [schedule]="--dry-run --json --user"
    [why]="--json --user"
    [show]="--json --user"
    [dump]="--output --user"
    [gantt]="--output --from --to --paper --landscape --one-page --expand --collapsed --no-links --width --user"
    [chart]="--earned-value --utilisation --output --by --at --from --to --paper --landscape --width --user"
    [play]="--output --title --at --user"
    [apply]="--dry-run --stop-on-refusal --user"
    [undo]="--json --user"
    [redo]="--json --user"
    [history]="--json --user"
    [scene]="--json --user"
    [config]="--json --all"
    [verify]="--json"
)

# The words that follow an option which takes a value; files for those that name one.
_orvane_value()
{
    case $1 in
        --format) COMPREPLY=($(compgen -W "mspdi csv" -- "$2")) ;;
        --date-order) COMPREPLY=($(compgen -W "day-first month-first" -- "$2")) ;;
        --paper) COMPREPLY=($(compgen -W "A4 A3 A2 A1" -- "$2")) ;;
        -o | --output) mapfile -t COMPREPLY < <(compgen -f -- "$2") ;;
        --user | --start | --from | --to | --width | --title | --at) COMPREPLY=() ;;
        *) return 1 ;;
    esac
}

# Folders, and files whose names end as the pattern says.
_orvane_files()
{
    local file
    COMPREPLY=()
    while IFS= read -r file; do
        [[ -d $file || $file == $2 ]] && COMPREPLY+=("$file")
    done < <(compgen -f -- "$1")
}

_orvane()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    compopt -o filenames 2>/dev/null
    if ((COMP_CWORD == 1)); then
        COMPREPLY=($(compgen -W "${!_orvane_options[*]} --help --version" -- "$word"))
        return
    fi
    _orvane_value "$before" "$word" && return
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "${_orvane_options[$command]} --help" -- "$word"))
        return
    fi
    local words=""
    case $command:$COMP_CWORD in
        show:3) words="tasks critical-path resources costs risks users calendars" ;;
        scene:3) words="add list" ;;
        config:2) words="list get set reset" ;;
        config:3) words=$(orvane config list 2>/dev/null | sed '1d;s/ .*//') ;;
        import:* | verify:* | scene:4 | apply:3) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
        config:* | why:3 | undo:3 | redo:3) ;;
        *) _orvane_files "$word" "*.prj" ;;
    esac
    [[ -z $words ]] || COMPREPLY=($(compgen -W "$words" -- "$word"))
}

complete -F _orvane orvane
