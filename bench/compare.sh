#!/bin/sh
# Measures the walk against a bare loop of system calls and against other tools, pair by pair in turn at
# ordinary priority: the median of 11 paired ratios with its spread. Warm cache; as root also a cold one.
#   bench/compare.sh [--regenerate] [--million] [--tree FOLDER]
# The tree (200,000 files in 2,000 folders) is made once, in build/bench or in the folder of $VELLMOOR_BENCH_TREES.
# --regenerate makes it anew; --million compares 1,000,000 files with 100,000; --tree measures an existing folder instead.
set -eu
cd "$(dirname "$0")/.."
build=${VELLMOOR_BENCH_BUILD:-build/bench}
trees=${VELLMOOR_BENCH_TREES:-build/bench/trees}
regenerate=no million=no tree=
while [ $# -gt 0 ]; do
    case $1 in
    --regenerate) regenerate=yes ;;
    --million) million=yes ;;
    --tree) tree=${2:?"--tree needs a folder"}; shift ;;
    *) sed -n '2,6s/^# *//p' "$0" >&2; exit 2 ;;
    esac
    shift
done

[ -n "${VELLMOOR_BENCH_BUILT:-}" ] || {
    [ -e "$build/build.ninja" ] || cmake --preset release -B "$build" -DVELLMOOR_BUILD_WINDOW=OFF -DBUILD_TESTING=OFF
    cmake --build "$build" --target walk_bench bare_walk make_tree run_interleaved vellmoor-probe
} >&2

# make NAME FILES FOLDERS: a finished tree has a file beside it, so that half a tree is not taken for a whole one.
make() {
    if [ $regenerate = yes ] || [ ! -e "$trees/$1.made" ]; then
        echo "making $2 files in $3 folders in $trees/$1" >&2
        rm -rf "${trees:?}/$1" "$trees/$1.made"
        mkdir -p "$trees"
        "$build/bench/make_tree" "$trees/$1" "$2" "$3"
        touch "$trees/$1.made"
    fi
}

# has NAME: whether the tool is installed; says so when it is not.
has() { command -v "$1" >/dev/null || { echo "$1 is not installed and was left out" >&2; return 1; }; }

compare() {
    ours=$("$build/bench/walk_bench" "$1")
    bare=$("$build/bench/bare_walk" "$1")
    [ "$ours" = "$bare" ] || { echo "the sums differ: walk \"$ours\", bare loop \"$bare\"" >&2; exit 1; }
    echo "$1: ${ours#* } files, ${ours% *} allocated bytes; $(nproc) processors, $(df --output=fstype "$1" | tail -1)"
    echo
    set -- "$1" walk "$build/bench/walk_bench" "$1" -- "walk with names" "$build/bench/walk_bench" "$1" --names \
        -- "bare loop" "$build/bench/bare_walk" "$1"
    folder=$1; shift
    if has du; then set -- "$@" -- "du -s" du -s "$folder"; fi
    if has gdu; then set -- "$@" -- "gdu -n" gdu -n -p "$folder"; fi
    if has bfs; then set -- "$@" -- "bfs -size" bfs "$folder" -nohidden -type f -size +250M; fi
    "$build/bench/run_interleaved" 11 "$@"
    echo
}

# The same beside a process that never rests; and the developers' measuring program, which is a process for each look.
compare_further() {
    sh -c 'while :; do :; done' &
    busy=$!
    echo "Beside another busy process:"
    echo
    "$build/bench/run_interleaved" 11 "walk busy" "$build/bench/walk_bench" "$1" -- "bare loop busy" "$build/bench/bare_walk" "$1"
    kill "$busy"
    echo
    echo "With the deep-scan rules of a scan, and its whole start:"
    echo
    "$build/bench/run_interleaved" 11 "measure" "$build/tools/probe/vellmoor-probe" measure "$1" \
        -- "bare loop" "$build/bench/bare_walk" "$1"
    echo
}

# The ratio to the bare loop at another size, over that at 100,000 files.
scale() {
    make 100k 100000 1000
    make 1000k 1000000 10000
    "$build/bench/run_interleaved" 7 "walk 100k" "$build/bench/walk_bench" "$trees/100k" \
        -- "bare loop 100k" "$build/bench/bare_walk" "$trees/100k"
    echo
    "$build/bench/run_interleaved" 7 "walk 1000k" "$build/bench/walk_bench" "$trees/1000k" \
        -- "bare loop 1000k" "$build/bench/bare_walk" "$trees/1000k"
    echo
}

# The same with nothing in the cache, which only root can have.
compare_cold() {
    if [ "$(id -u)" -ne 0 ] || ! echo 3 2>/dev/null >/proc/sys/vm/drop_caches; then
        echo "No cold figure: only root may drop the caches." >&2
        return
    fi
    echo "With a cold cache:"
    echo
    VELLMOOR_BENCH_COLD='sync; echo 3 >/proc/sys/vm/drop_caches' "$build/bench/run_interleaved" 11 \
        "cold walk" "$build/bench/walk_bench" "$1" -- "cold du -s" du -s "$1"
    echo
}

# The time from the flag to the return, the worst of nine.
cancel() {
    worst=0
    for files in 10000 20000 30000 40000 50000 60000 70000 80000 90000; do
        took=$("$build/bench/walk_bench" "$1" --threads "$(nproc)" --cancel-at $((files / $(nproc))))
        worst=$(printf '%s\n%s\n' "$worst" "$took" | sort -n | tail -1)
    done
    echo "A cancelled walk returned after at most $worst ms (9 runs)."
    echo
}

if [ -n "$tree" ]; then
    compare "$tree"
    exit
fi
make 200k 200000 2000
compare "$trees/200k"
compare_further "$trees/200k"
compare_cold "$trees/200k"
cancel "$trees/200k"
if [ $million = yes ]; then
    scale
fi
