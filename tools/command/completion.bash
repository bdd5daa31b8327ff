# shellcheck shell=bash disable=SC2034,SC2059,SC2086,SC2088,SC2154,SC2206
# Completion of prefs for bash, made by "prefs --generate bash".

# A word as the program would get it. Nothing in it is run.
_prefs_plain()
{
    plain_word=${1//[\"\'\\]/}
    [[ $plain_word != '~/'* ]] || plain_word=$HOME/${plain_word:2}
}

# @common@

_prefs()
{
    COMPREPLY=()
    # @tables@

    # Readline may have broken words at "=".
    local IFS=$' \t\n' current='' plain_word='' i last
    local -a words=() before=()
    for ((i = 0; i <= COMP_CWORD; i++)); do
        current=${COMP_WORDS[i]}
        last=$((${#words[@]} - 1))
        if ((last > 0)) && [[ ${words[last]} == --* && ($current == = || ${words[last]} == *=) ]]; then
            words[last]+=$current
        else
            words+=("$current")
        fi
    done
    last=$((${#words[@]} - 1))
    current=${words[last]}
    for ((i = 1; i < last; i++)); do
        _prefs_plain "${words[i]}"
        before+=("$plain_word")
    done

    local -a typed=() arguments=()
    local verb='' pending='' plain='' option=''
    _prefs_scan

    local kind='' prefix='' candidates=''
    local -a kinds=(${argument_kinds[${verb:-none}]-})
    if [[ -n $pending ]]; then
        kind=${option_kinds[$pending]}
    elif [[ -z $plain && $current == --*=* ]]; then
        option=${current%%=*}
        kind=${option_kinds[$option]-}
        current=${current#*=}
        # The part before "=" is to be given when readline does not break words there.
        [[ ${COMP_WORDS[COMP_CWORD]} != --*=* ]] || prefix=$option=
    elif [[ -z $plain && $current == -* ]]; then
        candidates="$general_options ${verb_options[${verb:-none}]-}"
        candidates=${candidates// /$'\n'}
    elif [[ -z $verb ]]; then
        candidates=${verbs// /$'\n'}
    elif ((${#kinds[@]} > 0)); then
        last=$((${#kinds[@]} - 1))
        i=${#arguments[@]}
        ((i <= last)) || [[ ${kinds[last]} != *... ]] || i=$last
        kind=${kinds[i]-}
        kind=${kind%...}
    fi

    _prefs_plain "${words[0]}"
    local program=$plain_word key=${arguments[0]-}
    case ${sources[${kind:-none}]-} in
        files) compopt -o default ;;
        folders) compopt -o dirnames ;;
        choices) candidates=${choices[$kind]} ;;
        keys | values) candidates=$(_prefs_ask "${sources[$kind]}") ;;
    esac
    [[ -n $candidates ]] || return 0

    # Behind an open quote readline quotes by itself.
    local quote=%q
    [[ $current != [\"\']* ]] || quote=%s
    _prefs_plain "$current"
    while IFS= read -r option; do
        [[ ${option,,} != "${plain_word,,}"* ]] || COMPREPLY+=("$prefix$(printf "$quote" "$option")")
    done <<<"$candidates"
}

complete -F _prefs prefs
