#!/usr/bin/env bash
# Makes the tag of a release when everything that a release promises holds. The tag is made here and not pushed: pushing it
# is what starts the hosted build (.github/workflows/release.yml).
# Usage: scripts/release.sh X.Y.Z [--dry-run]   (--dry-run makes no tag)
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/common.sh
. scripts/common.sh

fail() { say "$@"; exit 1; }
version=${1:-}
[[ $version =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "usage: scripts/release.sh X.Y.Z [--dry-run]"
case ${2:-} in
  '' | --dry-run) ;;
  *) fail "usage: scripts/release.sh X.Y.Z [--dry-run]" ;;
esac

[ -z "$(git status --porcelain)" ] || fail "There are changes that are not committed."
! git rev-parse -q --verify "refs/tags/v$version" >/dev/null || fail "There is a tag v$version already."
newest=$(scripts/release-notes.py version)
[ "$newest" = "$version" ] || fail "The newest release in NEWS is $newest."
date=$(scripts/release-notes.py date)
[ "$date" = "$(date -u +%F)" ] || fail "NEWS dates $version $date; today is $(date -u +%F)."
scripts/release-notes.py --check

scripts/test.sh
scripts/package.sh check
[ -z "$(git status --porcelain)" ] || fail "The checks changed files that are committed."

[ "${2:-}" != --dry-run ] || { echo "Vellmoor $version can be released."; exit 0; }
scripts/release-notes.py github | git tag --annotate --file=- --cleanup=verbatim "v$version"
echo "Made the tag v$version. To release it: git push origin v$version"
