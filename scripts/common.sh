# Sourced by run, test and .ci/run: the packages, and how they are installed, built and tested.
# shellcheck shell=bash disable=SC2034

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools qt6-tools-dev qt6-l10n-tools libgtest-dev)
fuzz_packages=("${build_packages[@]}" clang libclang-rt-14-dev)
test_packages=("${build_packages[@]}" libbenchmark-dev libxml2-utils strace pkgconf doxygen mandoc zsh python3
    xvfb qt6-qpa-plugins fonts-dejavu-core)
ci_packages=("${test_packages[@]}" "${fuzz_packages[@]}" git clang-format clang-tidy shellcheck)

# Progress goes to the error stream: the output of `./run ARGUMENTS` is that of the program alone.
say() { printf '== %s\n' "$*" >&2; }
fail() { printf 'error: %s\n' "$*" >&2 && exit 1; }

# quietly LOG COMMAND...: the output goes to LOG; its last 60 lines are shown when the command fails.
quietly()
{
    local log=$1 status=0
    shift
    "$@" >>"$log" 2>&1 </dev/null || status=$?
    if [ $status -ne 0 ]; then
        tail -n 60 "$log" >&2
        fail "'$*' failed; its whole output is in $log"
    fi
}

# install_missing PACKAGE...: asks dpkg, and apt-get only for what is not there.
install_missing()
{
    if ! command -v dpkg-query >/dev/null; then
        say "no dpkg here: the equivalents of these Debian packages are needed: $*"
        return
    fi
    local installed package missing=() as_root=()
    installed=" $(dpkg-query -W -f='${Package}=${db:Status-Status} ' "$@" 2>/dev/null || true)"
    for package in "$@"; do
        [[ $installed == *" $package=installed "* ]] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    say "installing ${missing[*]}"
    if [ "$(id -u)" -ne 0 ] && command -v sudo >/dev/null; then
        as_root=(sudo)
    fi
    # A failed update need not matter: the lists of an earlier one may do.
    "${as_root[@]}" apt-get -qq update >&2 </dev/null || true
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq install --yes --no-install-recommends "${missing[@]}" >&2 </dev/null \
        || fail "packages are missing; as root: apt-get update && apt-get install ${missing[*]}"
}

# build PRESET [TARGET]: configures and builds, into build/PRESET.
build()
{
    local folder=$root/build/$1 fresh=() target=()
    mkdir -p "$folder"
    : >"$folder/build.log"
    # A build folder that was copied along from elsewhere is begun anew.
    grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt" || fresh=(--fresh)
    [ $# -lt 2 ] || target=(--target "$2")
    say "building preset $1"
    quietly "$folder/build.log" cmake -S "$root" --preset "$1" "${fresh[@]}"
    quietly "$folder/build.log" cmake --build "$folder" --parallel "$(nproc)" "${target[@]}"
}

# run_tests PRESET [CTEST ARGUMENT...]: no display is used, and no test at all counts as a failure.
run_tests()
{
    say "testing preset $1"
    (
        cd "$root" || exit
        unset DISPLAY WAYLAND_DISPLAY
        export QT_QPA_PLATFORM=offscreen
        ctest --preset "$1" --parallel 2 --no-tests=error "${@:2}" </dev/null
    )
}
