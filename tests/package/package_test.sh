#!/usr/bin/env bash
# The library as another project meets it: installed, moved elsewhere, found by CMake and by pkg-config.
#   package_test.sh SOURCE_FOLDER BUILD_FOLDER LIBDIR INCLUDEDIR COMPILER [FLAG...]
set -euo pipefail

source=$1 build=$2 libdir=$3 includedir=$4
compile=("${@:5}")
folder=$(cd "$(mktemp -d)" && pwd -P)
trap 'rm -rf "$folder"' EXIT
export XDG_RUNTIME_DIR=$folder # where there is none, Qt says so at each start
unset DESTDIR LD_LIBRARY_PATH CMAKE_PREFIX_PATH CXXFLAGS LDFLAGS

step() { printf '== %s\n' "$*"; }
fail() { printf 'error: %s\n' "$*" && exit 1; }

step "install, then move"
cmake --install "$build" --prefix "$folder/first" >"$folder/install.log"
prefix=$folder/second/place
mkdir "$folder/second"
mv "$folder/first" "$prefix"
headers=$prefix/$includedir/BrivantPreference

step "no installed text names a folder of the build or of the installation"
! grep -rF -e "$source" -e "$build" -e "$folder" \
    "$prefix/$includedir" "$prefix/share" "$prefix/$libdir/cmake" "$prefix/$libdir/pkgconfig" \
    || fail "the lines above"

step "the installed headers are the public ones"
names() { find "$@" -printf '%f\n' | LC_ALL=C sort; }
diff <(names "$source"/src "$build"/include -name '*.h' ! -name '*_p.h') <(names "$headers" -name '*.h') \
    || fail "missing (<) or not public (>): see above"

export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
read -ra cflags < <(pkg-config --cflags brivantpreference)
read -ra widget_cflags < <(pkg-config --cflags Qt6Widgets)
read -ra libs < <(pkg-config --libs brivantpreference)

step "each header compiles alone, and all of them with a strict and with a later language"
strict=(-fPIC -Wall -Wextra -Wpedantic -Werror -DQT_NO_KEYWORDS -DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII)
check_syntax=("${compile[@]}" "${strict[@]}" "${cflags[@]}" "${widget_cflags[@]}" -fsyntax-only -x c++)
find "$headers" -name '*.h' -print0 | xargs -0 -n 1 -P "$(nproc)" "${check_syntax[@]}" -std=c++17
find "$headers" -name '*.h' -printf '#include <%f>\n' | LC_ALL=C sort | "${check_syntax[@]}" -std=c++20 -

# run CONSUMER: it uses the libraries and the resources of the installation, and a folder of its own.
run()
{
    readelf -d "$1" | grep -qF "[libBrivantPreference.so.${version%%.*}]" || fail "$1 needs another library version"
    uses_installation "$1"
    mkdir "$1.files"
    [ "$("$1" "$prefix" "$1.files")" = "$version" ] || fail "$1 failed or has other headers than $version"
}

uses_installation()
{
    local linked
    linked=$(ldd "$1" | grep libBrivant)
    ! grep -vF "=> $prefix/" <<<"$linked" || fail "$1 uses libraries from elsewhere"
}

version=$(pkg-config --modversion brivantpreference)

step "a consumer found by pkg-config"
main=$source/tests/package/consumer/main.cpp
"${compile[@]}" -std=c++17 -fPIC "${cflags[@]}" "$main" -o "$folder/plain" "${libs[@]}" -Wl,-rpath,"$prefix/$libdir"
run "$folder/plain"

step "a consumer found by CMake"
CXXFLAGS=${compile[*]:1} cmake -S "$source/tests/package/consumer" -B "$folder/cmake" -G Ninja \
    -DCMAKE_CXX_COMPILER="${compile[0]}" -DCMAKE_PREFIX_PATH="$prefix" >"$folder/cmake.log"
cmake --build "$folder/cmake" >>"$folder/cmake.log" || fail "$(cat "$folder/cmake.log")"
run "$folder/cmake/consumer"

step "the program"
uses_installation "$prefix/bin/prefs"
[ "$("$prefix/bin/prefs" --user "$folder/plain.files/user.pref" get XSHEET_LINE_HOLD)" = 4 ] \
    || fail "prefs does not give what the consumer saved"
