# shellcheck shell=bash
# How every script here begins: it answers --help with the comment at its head, and works in the
# project's folder, wherever it was called from.

set -euo pipefail

case ${1-} in
  -h | --help)
    awk 'NR == 1 { next } !/^#/ { exit } { sub(/^# ?/, ""); print }' "$0"
    exit 0
    ;;
esac

script=$(basename "$0")
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
