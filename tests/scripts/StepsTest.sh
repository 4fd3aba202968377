#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The apt steps of scripts/steps.sh with an apt-get of our own: one that finds the lock held, one that fails at once.
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../../scripts/steps.sh"

folder=$(mktemp -d) || fail "no room for a temporary folder"
trap 'rm -rf "$folder"' EXIT
PATH=$folder:$PATH
sleep() { pauses=$((pauses + 1)); }
failures=0
expect() { [ "$2" = "$3" ] || { echo "$1: \"$2\" where \"$3\" was expected"; failures=$((failures + 1)); }; }

apt_get_that() {
  : >"$folder/calls"
  printf '#!/usr/bin/env bash\necho "$1" >>"%s/calls"\ncalls=$(wc -l <"%s/calls")\n%s\n' "$folder" "$folder" "$1" >"$folder/apt-get"
  printf '#!/usr/bin/env bash\nexec "$@"\n' >"$folder/sudo"
  chmod +x "$folder/apt-get" "$folder/sudo"
  pauses=0
}

for lock in "Could not get lock /var/lib/dpkg/lock-frontend. It is held by process 7 (apt-get)" \
            "Unable to acquire the dpkg frontend lock (/var/lib/dpkg/lock-frontend), is another process using it?" \
            "Unable to lock directory /var/lib/apt/lists/"; do
  apt_get_that "[ \$calls -ge 3 ] || { echo 'E: $lock' >&2; exit 100; }"
  apt_get update >"$folder/said" 2>&1
  expect "a lock that is freed" "$?" 0
  expect "pauses" "$pauses" 2
  expect "what is said, once" "$(cat "$folder/said")" "Another package manager is at work; waiting for it."
done

apt_get_that "echo 'E: Could not get lock x' >&2; exit 100"
apt_get update >"$folder/said" 2>&1
expect "a lock that is never freed" "$?" 100
expect "its last words" "$(tail -n 1 "$folder/said")" "E: Could not get lock x"

apt_get_that "echo 'E: Unable to locate package nothing' >&2; exit 100"
apt_get install nothing >"$folder/said" 2>&1
expect "another failure" "$?" 100
expect "its pauses" "$pauses" 0
expect "its words" "$(cat "$folder/said")" "E: Unable to locate package nothing"
exit "$((failures > 0))"
