#!/usr/bin/env bash
# Installs a built tree into a temporary place, moves it, and builds and runs the consumer against it: once through the
# CMake package, once through pkg-config. Usage: check_consumer.sh BUILD_DIR CXX EXPECTED_OUTPUT
set -euo pipefail

build=$1 cxx=$2 expected=$3
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/first" >"$work/install.log"
mv "$work/first" "$work/moved"

check() # name, command...
{
    local name=$1 output
    shift
    output=$("$@")
    echo "$name: $output"
    if [[ "$output" != "$expected" ]]; then
        echo "expected: $expected"
        exit 1
    fi
}

cmake -S "$here" -B "$work/cmake" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$work/moved" >"$work/log"
cmake --build "$work/cmake" >>"$work/log"
check "find_package" "$work/cmake/consumer"

pc=$(find "$work/moved" -name truearc.pc)
lib=$(dirname "$(dirname "$pc")")
export PKG_CONFIG_PATH
PKG_CONFIG_PATH=$(dirname "$pc")
read -ra cflags < <(pkg-config --cflags truearc)
read -ra libs < <(pkg-config --libs truearc)
"$cxx" -std=c++17 "$here/main.cpp" "${cflags[@]}" "${libs[@]}" -o "$work/by_pkg_config"
check "pkg-config" env LD_LIBRARY_PATH="$lib" "$work/by_pkg_config"
