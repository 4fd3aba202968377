#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# tidy-one.sh FILE: clang-tidy 14 over one source with the compile commands of the preset "tidy".
found=$(clang-tidy-14 --quiet --warnings-as-errors='*' -p build/tidy "$1" 2>/dev/null) && exit 0
printf '%s\n' "$found"
exit 1
