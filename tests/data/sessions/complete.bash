# complete.bash SCRIPT WORD...: what bash offers for the last word, one a line, with the functions of SCRIPT.
set -u # as a user may have it
. "$1"
compopt() { printf '(%s)\n' "$2"; }
COMP_WORDS=("${@:2}")
COMP_CWORD=$(($# - 2))
_prefs
[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\n' "${COMPREPLY[@]}"
