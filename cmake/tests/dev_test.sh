#!/usr/bin/env bash
# dev_test.sh PROJECT SCRATCH: shows what ./dev says and does on machines without the parts that it needs. All commands that
# it finds are stand-ins.
# The stand-ins' own variables are not for this script.
# shellcheck disable=SC2016
set -euo pipefail
project=$1 work=$2
bin=$work/bin
fresh() {
    rm -rf "$work"
    mkdir -p "$bin"
    for tool in bash dirname cat grep nproc; do
        ln -s "$(command -v $tool)" "$bin/$tool"
    done
}
# stand_in NAME BODY
stand_in() {
    printf '#!/bin/bash\n%s\n' "$2" >"$bin/$1"
    chmod +x "$bin/$1"
}
run_dev() { env -i PATH="$bin" HOME="$work" "$(command -v bash)" "$project/dev" "$@" >"$work/said" 2>&1; }
expect() {
    grep -qF -- "$1" "$2" || { printf 'expected "%s", and this is it:\n' "$1"; cat "$2"; exit 1; }
}
refuse() {
    ! grep -qF -- "$1" "$2" || { printf 'not expected "%s", and this is it:\n' "$1"; cat "$2"; exit 1; }
}

# No packages of Debian's: every missing part is named, and what is there is not.
fresh
stand_in cmake 'exit 0'
stand_in pkg-config 'exit 1'
run_dev build && exit 1
expect 'missing: command ninja (Debian 12: ninja-build)' "$work/said"
expect 'missing: header pugixml.hpp (Debian 12: libpugixml-dev)' "$work/said"
expect 'missing: module Qt6Widgets>=6.4 (Debian 12: qt6-base-dev)' "$work/said"
refuse 'command cmake' "$work/said"
# The icon is drawn where that can be done.
refuse 'missing: command rsvg-convert' "$work/said"
expect 'command rsvg-convert is missing' "$work/said"

# A part that is there is not named, as soon as it is there; and without pkg-config it is CMake that looks for modules.
stand_in c++ 'read -r line; [[ $line != *pugixml* ]]'
stand_in ninja 'exit 0'
rm "$bin/pkg-config"
run_dev build && exit 1
expect 'missing: header pugixml.hpp (Debian 12: libpugixml-dev)' "$work/said"
refuse 'missing: header CLI/CLI.hpp' "$work/said"
refuse 'missing: command ninja' "$work/said"
refuse Qt6Widgets "$work/said"

# Debian: the installation waits for another one, and an older or newer release's Boost is taken.
fresh
stand_in dpkg-query 'exit 1'
stand_in id 'echo 0'
stand_in env 'while [[ $1 == *=* ]]; do shift; done; exec "$@"'
stand_in apt-get 'echo "$*" >>"$HOME/apt"'
# It knows each name, as it does where another package mentions it, and has no version of this one.
stand_in apt-cache '[ "$1 $2" = "madison libboost1.81-dev" ] || echo "${*: -1} | 1.0 | source"'
run_dev build && exit 1
expect 'DPkg::Lock::Timeout=600 update' "$work/apt"
expect 'DPkg::Lock::Timeout=600 install' "$work/apt"
expect ' libboost-dev ' "$work/apt"
refuse libboost1.81-dev "$work/apt"

# A package that this release has not: what is in it is looked for.
stand_in apt-cache '[ "$1 $2" = "madison clang-format-14" ] || echo "${*: -1} | 1.0 | source"'
run_dev format && exit 1
expect 'missing: command clang-format-14 (Debian 12: clang-format-14)' "$work/said"
stand_in clang-format-14 'exit 0'
stand_in git 'exit 0'
stand_in xargs 'exit 0'
run_dev format
refuse missing: "$work/said"

# What follows the preset goes to ctest, and an unknown preset is refused.
fresh
for tool in cut mkdir; do ln -s "$(command -v $tool)" "$bin/$tool"; done
stand_in dpkg-query 'echo "install ok installed"'
stand_in apt-get 'exit 1'
stand_in cmake 'echo "$*" >>"$HOME/cmake"'
stand_in ctest 'echo "$*" >>"$HOME/ctest"'
run_dev test asan -R 'Some.Name'
expect '--build --preset asan' "$work/cmake"
expect '--preset asan ' "$work/ctest"
expect ' --no-tests=error -R Some.Name' "$work/ctest"
run_dev test -R Other
expect '--preset release ' "$work/ctest"
expect ' -R Other' "$work/ctest"
run_dev test profile -R Other && exit 1
expect "there is no preset 'profile'" "$work/said"
rm -rf "$work"
