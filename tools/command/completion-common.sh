# shellcheck shell=bash disable=SC2154,SC2034
# What the completions for bash and zsh share. Both shells let a function see the local variables of its caller.

_prefs_ask()
{
    local line rest newline=$'\n'
    if [[ $1 == keys ]]; then
        "$program" "${typed[@]}" list | while IFS=$'\t' read -r line rest; do printf '%s\n' "$line"; done
        return
    fi
    "$program" "${typed[@]}" describe -- "$key" | while IFS= read -r line; do
        case $line in
            'Type: bool') printf '%s\n' true false ;;
            'Choices: '*) line=${line#*: } && printf '%s\n' "${line//, /$newline}" ;;
        esac
    done
} 2>/dev/null </dev/null

# Goes through the words before the last one. Behind it, "typed" holds the options that choose the store, "verb" the
# verb, "arguments" what follows it, "pending" the option whose value is the last word, and "plain" is set where
# nothing is an option any more.
_prefs_scan()
{
    local kept='' word=''
    for word in "${before[@]}"; do
        if [[ -n $pending ]]; then
            [[ -z $kept ]] || typed+=("$word")
            pending=
        elif [[ -z $plain && $word == -- ]]; then
            plain=1
        elif [[ -z $plain && $word == -?* && $word != -[0-9.]* ]]; then
            option=${word%%=*}
            kept=
            [[ $store_options != *" $option "* ]] || kept=1
            [[ -z $kept ]] || typed+=("$word")
            [[ $word == *=* ]] || pending=${option_kinds[$option]:+$option}
        else
            [[ $word != -?* ]] || plain=1
            if [[ -z $verb ]]; then verb=$word; else arguments+=("$word"); fi
        fi
    done
}
