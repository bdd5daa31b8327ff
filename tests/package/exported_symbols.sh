#!/usr/bin/env bash
# Compares what the libraries in LIBRARY_FOLDER export with the lists beside this file; --update writes the lists.
#   exported_symbols.sh LIBRARY_FOLDER [--update]
#
# Every name is a promise to the modules that link the library: one that goes breaks them. Private members of exported
# classes are in the lists too. The variables behind the cached values are not: PR_CachedValues.def lists them. A member
# of a class template stands for all its instantiations, with "..." in the place of what differs; its type information is
# in whichever library uses it.
set -euo pipefail
export LC_ALL=C
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
libraries=$(cd "$1" && pwd)

status=0
for name in Base Preference PreferenceWidgets; do
    list=exported-symbols-${name,,}.txt
    [ -e "$libraries/libBrivant$name.so" ] || continue # a build without widgets
    # Names that begin with "_" are the linker's and the sanitizers'.
    exported=$(nm -D --defined-only --demangle "$libraries/libBrivant$name.so" | cut -d' ' -f3- \
        | grep -v -e '^_' -e '^PR_CachedPreferences::_' -e '^typeinfo.* for PR_TypedItem<' \
        | sed -E '/PR_TypedItem</{s/<[^<>]*>/<...>/; s/[(].*/(...)/}' \
        | sort -u)
    if [ "${2:-}" = --update ]; then
        printf '%s\n' "$exported" >"$here/$list"
    else
        diff -u --label "listed in $list" --label "exported by libBrivant$name.so" "$here/$list" - <<<"$exported" \
            || status=1
    fi
done
[ $status -eq 0 ] || printf '\nIf that is what you want: %q %q --update\n' "$here/${0##*/}" "$libraries"
exit $status
