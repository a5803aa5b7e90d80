#!/usr/bin/env bash
# A step of ./dev keeps its log under a name made of its title. On a bare machine the title lists every package.
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
root=$1
export DIALWRIGHT_CACHE=$scratch/cache
# shellcheck source=/dev/null
source "$root/scripts/lib/common.sh"
logs=$scratch/logs
title="Installing $(printf 'a-package-%s ' {1..50})"
step "$title" echo "it ran"
grep -q "it ran" "$(log_of "$title")"
