# scripts/lib.sh - what the scripts share: where things are, and steps that show their time.
# Sourced, not run. Every script that sources it stops at the first error.
# shellcheck shell=bash
set -euo pipefail

checkout=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/corvelle
wine_root=${CORVELLE_WINE_ROOT:-$cache/wine-bookworm}
# shellcheck disable=SC2034  # for those who source this
wine10_root=$cache/wine-trixie
# shellcheck disable=SC2034
system_idl=$cache/idl
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

# now - a point in time, in milliseconds.
now() { echo $((${EPOCHREALTIME/[.,]/} / 1000)); }

# seconds_since START - "12.3 s".
seconds_since() {
  local elapsed=$(($(now) - $1))
  printf '%d.%d s' $((elapsed / 1000)) $((elapsed % 1000 / 100))
}

# prefix_pattern ROOT - where scripts/wine keeps the prefixes that it copies for programs run in that root.
prefix_pattern() { echo "$cache/prefix${1//\//-}"; }

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
