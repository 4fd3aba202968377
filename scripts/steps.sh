# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Shared by ./run and ./test: the folder, the steps, the packages. Sourced, not run.

set -u
ZW_ROOT=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd -P)
# Builds beside each other take from the cache what one of them has compiled, wherever the folder is.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$ZW_ROOT} CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}

# What the programs are built with and run on, by Debian package name.
ZW_BUILD_PACKAGES=(cmake ninja-build g++ ccache qt6-base-dev qt6-svg-dev qt6-multimedia-dev libgl-dev
                   libfmt-dev libspdlog-dev libtinyxml2-dev fonts-liberation)
# What the tests and benchmarks need besides.
ZW_TEST_PACKAGES=(libgtest-dev libgmock-dev libbenchmark-dev dbus-daemon desktop-file-utils
                  xvfb xauth openbox icewm xdotool libxcb1-dev at-spi2-core)
# What the sanitizer build needs besides.
ZW_ASAN_PACKAGES=(clang-14 libclang-rt-14-dev)

fail() {
  printf '%s: %s\n' "$(basename "$0")" "$1" >&2
  exit 1
}

# step "what it is" command...: runs the command; when it fails, one line names the step and everything stops.
step() {
  local name=$1
  shift
  "$@" || fail "failed: $name"
}

# quietly "what it is" command...: the same, but what the command prints is shown only when it fails.
quietly() {
  local name=$1 log
  shift
  log=$(mktemp) || fail "failed: $name (no room for a temporary file)"
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    fail "failed: $name"
  fi
  rm -f "$log"
}

# apt_get ARGUMENT...: apt-get as root. While another package manager holds a lock, waits for it, ten minutes at most.
apt_get() {
  local log as_root=() tries=120 code=0
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  log=$(mktemp) || fail "failed: apt-get $1 (no room for a temporary file)"
  until "${as_root[@]}" env LC_ALL=C DEBIAN_FRONTEND=noninteractive apt-get "$@" >"$log" 2>&1; do
    code=$?
    grep -qE '^E: (Could not get lock|Unable to (lock|acquire))' "$log" && [ $((tries -= 1)) -gt 0 ] || break
    [ $tries -eq 119 ] && echo "Another package manager is at work; waiting for it."
    sleep 5
    code=0
  done
  [ $code -eq 0 ] || cat "$log" >&2
  rm -f "$log"
  return $code
}

# Installs those of the named packages that are missing, after saying which.
install_packages() {
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
    fail "this script installs with apt-get, which is not here; install these and build with CMake: $*"
  local package missing=()
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null ||
    fail "these packages are missing and there is no sudo; as root, run: apt-get install ${missing[*]}"
  echo "Installing with apt-get: ${missing[*]}"
  step "apt-get update" apt_get update
  step "apt-get install ${missing[*]}" apt_get install -y --no-install-recommends "${missing[@]}"
}

# configure PRESET [cmake arguments]
configure() {
  local preset=$1
  shift
  quietly "configuring the $preset build" cmake --preset "$preset" "$@"
}

# build PRESET TARGET...: all targets when none is named.
build() {
  local preset=$1
  shift
  step "building $preset" cmake --build "build/$preset" ${1:+--target "$@"}
}
