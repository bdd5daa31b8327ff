#compdef prefs
# Completion of prefs for zsh, made by "prefs --generate zsh".

# @common@

# Offers what may stand for a kind of value.
_prefs_value()
{
    local -a found expl
    case ${sources[$1]-} in
        files) _files && return ;;
        folders) _files -/ && return ;;
        choices) found=("${(@f)choices[$1]}") ;;
        keys | values) found=("${(@f)$(_prefs_ask $sources[$1])}") ;;
    esac
    found=("${(@)found:#}")
    (($#found)) && _wanted values expl $1 compadd -M 'm:{a-zA-Z}={A-Za-z}' -a found
}

_prefs_verb()
{
    _describe -t verbs VERB verb_texts
}

_prefs()
{
    # @tables@

    # As the program would get them.
    local -a before=("${(@Q)words[2,CURRENT-1]}")
    before=("${(@)before/#\~\//$HOME/}")

    local -a typed=() arguments=()
    local verb= pending= plain= option=
    _prefs_scan
    # @specs@

    local program=${${(Q)words[1]}/#\~\//$HOME/} key=${arguments[1]-}
    _arguments -S $specs
}

_prefs "$@"
