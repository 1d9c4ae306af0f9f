# scripts/lib.sh - what the scripts share: where things are, and steps that show their time.
# Sourced, not run. Every script that sources it stops at the first error.
# shellcheck shell=bash
set -euo pipefail

checkout=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/corvelle

# This machine's release of Debian, by name; a derivative may say which one it is made of.
release=${CORVELLE_RELEASE:-$(. /etc/os-release && echo "${DEBIAN_CODENAME:-${VERSION_CODENAME:-unknown}}")}

# The Wine that programs run under is that of the machine's own release, in a root of its own.
wine_root=${CORVELLE_WINE_ROOT:-$cache/wine-$release}
wine10_root=$cache/wine-trixie

# The platform's IDL texts: where Wine's package for developers has them, or a copy of them alone.
system_idl=/usr/include/wine/wine/windows
[ -e "$system_idl/oaidl.idl" ] || system_idl=$cache/idl-$release

logs=$checkout/build/logs
jobs=$(nproc)

# What has to be built to test everything; a DLL comes before the tests that load it.
test_presets=(native asan win32 win64 win32-tests win64-tests)

# Checkouts of the same sources share their compilations.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$checkout} CCACHE_NOHASHDIR=1

die() {
  echo "$(basename "$0"): $*" >&2
  exit 1
}

[[ -e /proc/self/fd && -c /dev/null ]] || die "nothing works without /proc and /dev; mount them"

# now - a point in time, in milliseconds.
now() { echo $((${EPOCHREALTIME/[.,]/} / 1000)); }

# seconds_since START - "12.3 s".
seconds_since() {
  local elapsed=$(($(now) - $1))
  printf '%d.%d s' $((elapsed / 1000)) $((elapsed % 1000 / 100))
}

# prefix_pattern ROOT - where scripts/wine keeps the prefixes that it copies for programs run in that root.
prefix_pattern() { echo "$cache/prefix${1//\//-}"; }

# release_root RELEASE - where scripts/setup makes a root with all that building and testing need in that release.
release_root() { echo "$cache/release-$1"; }

# step TITLE COMMAND… - runs the command as one line of progress with its time. What it prints goes to
# build/logs/TITLE.log, and is shown when it fails; the command's exit status is the step's.
step() {
  local title=$1 log=$logs/${1//[^a-zA-Z0-9]/-}.log start status=0
  shift
  mkdir -p "$logs"
  start=$(now)
  printf '  %-44s ' "$title"
  "$@" </dev/null >"$log" 2>&1 || status=$?
  if [ $status -eq 0 ]; then
    printf '%10s\n' "$(seconds_since "$start")"
  else
    printf '%10s  FAILED\n' "$(seconds_since "$start")"
    show_failure "$log"
  fi
  return $status
}

# show_failure LOG - the end of a failed step's output, and where the rest is.
show_failure() {
  tail -n 200 "$1" | sed 's/^/    | /'
  echo "    (all of it: ${1#"$checkout"/})"
}

# For a trap of INT and TERM: what runs in the background ends with the script.
end_background() {
  local job
  for job in $(jobs -p); do pkill -TERM -P "$job"; done
  exit 130
}

# build_sample NAME 32|64 - builds samples/NAME as a user would, by its own project, with nothing of ours but the header.
build_sample() {
  local folder=$checkout/build/samples/$1$2
  CMAKE_CXX_COMPILER_LAUNCHER=ccache cmake -S "$checkout/samples/$1" -B "$folder" -G Ninja \
    --toolchain "$checkout/cmake/win$2.cmake" -DCORVELLE_FOLDER="$checkout/build/win$2" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Wconversion -Werror"
  cmake --build "$folder"
}

# build_preset PRESET [TARGET…] - configures one CMake preset and builds it, or these parts of it.
build_preset() {
  cd "$checkout"
  cmake --preset "$1" && cmake --build --preset "$1" --parallel "$jobs" ${2:+--target "${@:2}"}
}

# run_tests PRESET ARGUMENTS… - runs the tests of one CMake preset. Each has a Wine prefix of its own, since one's tests see
# what another's have registered.
run_tests() {
  CORVELLE_WINE_PREFIX=$checkout/build/wine-prefix-$1 ctest --preset "$1" --parallel "$jobs" --no-tests=error \
    --test-output-size-passed 100000000 --test-output-size-failed 100000000 "${@:2}"
}

# Runs the demo, whose reports must be those that were checked by hand.
demo_as_recorded() {
  local reports=$checkout/build/demo
  "$checkout/scripts/demo" &&
    sed 's/^\(Made on the computer\) [^ ]\+$/\1 NAME/' "$reports/stock_report.txt" |
    diff "$checkout/tests/samples/stock_report.txt" - &&
    diff "$checkout/tests/samples/stock_database.txt" "$reports/stock_database.txt"
}
