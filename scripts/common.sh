# shellcheck shell=bash
# The common beginning of all scripts here. A script answers --help with the comment at its head,
# and works in the project's folder, from any directory.

set -euo pipefail

case ${1-} in
  -h | --help)
    awk 'NR == 1 { next } !/^#/ { exit } { sub(/^# ?/, ""); print }' "$0"
    exit 0
    ;;
esac

script=$(basename "$0")
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")/.."

fail() {
  printf '%s: %s\n' "$script" "$1" >&2
  exit "${2:-1}"
}

usage_error() {
  fail "$1; see scripts/$script --help" 64
}

cores() {
  getconf _NPROCESSORS_ONLN
}

# Some kernels randomise addresses in a larger range. Libraries may then lie in the memory that the
# sanitizers of gcc 12 and clang 14 use, and every program ends before main.
largest_randomisation_that_sanitizers_bear=28

without_randomisation() {
  local bits
  bits=$(cat /proc/sys/vm/mmap_rnd_bits 2>/dev/null || echo 0)
  if [[ $bits -gt $largest_randomisation_that_sanitizers_bear ]]; then
    setarch --addr-no-randomize "$@"
  else
    "$@"
  fi
}
