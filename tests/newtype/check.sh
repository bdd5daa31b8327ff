#!/usr/bin/env bash
# Follows "Add an item type" of CONTRIBUTING.md in a copy of the sources: adds an integer of 64 bits, and uses it.
set -euo pipefail

source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cd "$source"
git ls-files -z --cached --others --exclude-standard | tar --create --null --files-from=- | tar --extract -C "$copy"
cd "$copy"

# edit FILE EXPRESSION: one of the places that the recipe names.
edit()
{
    cp "$1" "$1.before"
    sed -i "$2" "$1"
    if cmp -s "$1" "$1.before"; then
        echo "the recipe no longer fits $1" >&2
        exit 1
    fi
    rm "$1.before"
}
cp tests/newtype/PR_Int64Item.* src/items
edit src/items/CMakeLists.txt 's/^ *PR_IntItem\.h$/&\n        PR_Int64Item.h/; s/^ *PR_IntItem\.cpp$/&\n        PR_Int64Item.cpp/'
edit src/items/PR_ItemTypes_p.h 's/^#include "PR_IntItem.h"$/#include "PR_Int64Item.h"\n&/
s/^    PR_ItemRow<PR_DoubleItem>/    PR_ItemRow<PR_Int64Item>{ "int64", true,\n        [](QString const \&key) -> PR_PrefItem * { return new PR_Int64Item(PR_PrefItem::Internal, key, 0); } },\n&/'
edit tools/values/ValueText.cpp 's/^QString form(PR_BoolItem/std::optional<qint64> parse(PR_Int64Item const \&, QString const \&text)\n{\n    bool ok = false;\n    qint64 const value = text.toLongLong(\&ok);\n    return valueIf(ok, value);\n}\n\nQString form(PR_Int64Item const \&)\n{\n    return u"a whole number"_s;\n}\n\n&/'

cmake -S . -B build -G Ninja -DBUILD_TESTING=OFF -DBRIVANT_BUILD_EXAMPLES=OFF -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build build --target prefs >/dev/null

mkdir -p installation/resources
cat >installation/resources/prefs.xml <<'XML'
<preferences><category id="General"><int64 id="BIG" value="9000000000" shortDesc="Big"/></category></preferences>
XML
prefs() { build/bin/prefs --install installation --user user.pref "$@"; }
expect()
{
    if [ "$1" != "$2" ]; then
        echo "expected \"$2\", found \"$1\"" >&2
        exit 1
    fi
}
expect "$(prefs get BIG)" 9000000000
prefs check installation/resources/prefs.xml
prefs set BIG -9000000001
expect "$(prefs list)" $'BIG\tint64\t-9000000001'
expect "$(prefs set BIG x 2>&1 || true)" 'prefs: "x" is no value of BIG; expected a whole number.'
echo '<preferences><int64 id="BIG" value="7"/><int64 id="OTHER" value="8000000000"/></preferences>' >user-pref.xml
expect "$(prefs get BIG) $(prefs get OTHER)" "7 8000000000"
prefs set BIG 8
expect "$(grep -c '<int64' user-pref.xml)" 2
prefs reset BIG
expect "$(prefs get BIG)" 9000000000
rm user-pref.xml && echo "BIG 5000000000" >user.pref
expect "$(prefs get BIG)" 5000000000
