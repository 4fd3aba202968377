# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What ./test does besides the tests: each check installs what it needs and stops with one line when it finds something.
# Sourced, not run.

# Every source names its licence, and is laid out as clang-format 14 does it.
check_format() {
  local without
  without=$(find src tests bench fuzz scripts cmake \( -name '*.cpp' -o -name '*.h' -o -name '*.inl' -o -name '*.def' \
    -o -name '*.cmake' -o -name CMakeLists.txt -o -name '*.sh' \) -exec grep -L 'SPDX-License-Identifier: MIT' {} +)
  [ -z "$without" ] || fail "without the line \"SPDX-License-Identifier: MIT\" at their beginning: $without"
  install_packages clang-format-14
  find src tests bench fuzz -name '*.cpp' -print0 -o -name '*.h' -print0 -o -name '*.inl' -print0 -o -name '*.def' -print0 \
    >"$ZW_SCRATCH/files"
  step "the format; clang-format-14 -i mends it" \
    xargs -0 -P "$(nproc)" -n 50 clang-format-14 --dry-run --Werror <"$ZW_SCRATCH/files"
}

# The sources that differ from those of a commit: ZW_BASE, else where this branch left main, else the commit before.
changed_files() {
  local base
  base=${ZW_BASE:-$(git merge-base HEAD main 2>/dev/null || true)}
  [ -z "$base" ] || [ "$base" = "$(git rev-parse HEAD)" ] && base=HEAD~1
  git rev-parse -q --verify "$base^{commit}" >/dev/null || return 0
  git diff --name-only --diff-filter=d "$base" -- 'src/*.cpp'
}

# check_tidy [all]: clang-tidy 14 over the core and the changed files, or over all.
check_tidy() {
  install_packages "${ZW_BUILD_PACKAGES[@]}" clang-14 clang-tidy-14
  configure tidy -DZW_TESTS=OFF -DZW_BENCH=OFF
  if [ "${1:-}" = all ]; then
    git ls-files 'src/*.cpp'
  else
    { git ls-files 'src/base/*.cpp' 'src/data/*.cpp' 'src/settings/*.cpp' && changed_files; } | sort -u
  fi >"$ZW_SCRATCH/files"
  echo "clang-tidy over $(wc -l <"$ZW_SCRATCH/files") files"
  step "clang-tidy" xargs -P "$(nproc)" -n 1 scripts/tidy-one.sh <"$ZW_SCRATCH/files"
}

# Everything that needs no window, built without Widgets, and its tests.
check_core() {
  install_packages "${ZW_BUILD_PACKAGES[@]}" "${ZW_TEST_PACKAGES[@]}"
  configure core -DZW_TESTS=ON -DZW_BENCH=OFF
  build core
  step "the tests (core)" ctest --test-dir build/core -j "$(nproc)" --output-on-failure
}

# The programs without optimisation.
check_debug() {
  install_packages "${ZW_BUILD_PACKAGES[@]}"
  configure debug -DZW_TESTS=OFF -DZW_BENCH=OFF
  build debug
}

# check_fuzz [SECONDS]: every fuzzer from its corpus, 5 seconds each. What it finds is in build/asan/findings.
check_fuzz() {
  local seconds=${1:-5}
  install_packages "${ZW_BUILD_PACKAGES[@]}" "${ZW_ASAN_PACKAGES[@]}"
  configure asan
  build asan
  mkdir -p build/asan/findings
  find build/asan/bin/fuzz -name 'fuzz_*' -printf '%f\n' | sed 's/^fuzz_//' | sort >"$ZW_SCRATCH/fuzzers"
  step "fuzzing; the inputs are in build/asan/findings" \
    xargs -P "$(nproc)" -I '{}' scripts/fuzz-one.sh '{}' "$seconds" <"$ZW_SCRATCH/fuzzers"
}

# Every benchmark once. A missed bar is reported and fails nothing: the machine may be busy.
check_bench() {
  local program
  install_packages "${ZW_BUILD_PACKAGES[@]}" "${ZW_TEST_PACKAGES[@]}"
  configure release -DZW_TESTS=ON -DZW_BENCH=ON
  build release
  export BENCHMARK_MIN_TIME=${BENCHMARK_MIN_TIME:-0.1}
  for program in build/release/bin/bench/bench_*; do
    echo "== $(basename "$program")"
    QT_QPA_PLATFORM=offscreen timeout 300 "$program" || echo "$(basename "$program"): status $?, a bar is missed"
  done
}

# tsan_tests "what they are of" PROGRAM FILTER
tsan_tests() {
  local program=build/tsan/bin/tests/$2
  "$program" --gtest_list_tests --gtest_filter="$3" | grep -q '^  ' || fail "no test of $1 is named as scripts/checks.sh has it"
  step "$1 under thread sanitizer" "$program" --gtest_brief=1 --gtest_filter="$3"
}

# The threads that work while the program does: log, recovery writer and save.
check_tsan() {
  install_packages "${ZW_BUILD_PACKAGES[@]}" "${ZW_TEST_PACKAGES[@]}" "${ZW_ASAN_PACKAGES[@]}"
  configure tsan -DZW_TESTS=ON
  build tsan base_tests watchlist_tests
  export TSAN_OPTIONS="halt_on_error=1:${TSAN_OPTIONS:-}"
  tsan_tests "the log" base_tests 'Log*'
  tsan_tests "the recovery writer" watchlist_tests 'CRecoveryKeeperTest.*:CInterruptedSaveTest.*'
  tsan_tests "the save" watchlist_tests 'CFileSaver*'
}
