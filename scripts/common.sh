# What the scripts have in common; each begins by reading this. It lets a failing command end the script, goes to the root
# of the tree (the caller was in $here), and answers --help with the comment at the head of the script.
# shellcheck shell=bash disable=SC2034
set -euo pipefail

here=$PWD
script=scripts/${0##*/}
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() { sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$script"; }
misused() { usage >&2; exit 2; }
fail() { echo "$script: $*" >&2; exit 1; }

# build PRESET [ARGUMENT]...: configures and builds; the arguments go to the build.
build() { cmake --preset "$1" && cmake --build --preset "$1" --parallel "$(nproc)" "${@:2}"; }

# skip REASON: ends the script as one whose checks cannot be made here, for scripts/test to count.
skip() { echo "SKIPPED: $*"; exit 77; }

# Sets BEDPLATE_RUN32, the way in which 32-bit programs run here, for this script and those that it calls.
find_way() {
    BEDPLATE_RUN32=$(scripts/run-32) || exit
    export BEDPLATE_RUN32
}

# kernel_starts_32 CONSEQUENCE: whether the kernel starts 32-bit programs. If not, stderr tells, with the consequence.
kernel_starts_32() {
    find_way
    [[ $BEDPLATE_RUN32 == kernel ]] || { echo "$script: the kernel starts no 32-bit programs here: $*" >&2; return 1; }
}

# find_runner WIDTH: sets `run`, which is put in front of programs compiled with -m32 or -m64.
find_runner() {
    run=()
    [[ $1 == -m32 ]] || return 0
    find_way
    [[ $BEDPLATE_RUN32 != none ]] || skip "no 32-bit programs can be run here, see scripts/run-32 --help"
    run=("$PWD/scripts/run-32")
}

[[ ${1-} != --help && ${1-} != -h ]] || { usage; exit; }
