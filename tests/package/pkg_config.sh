#!/bin/sh
# Usage: pkg_config.sh PKG_CONFIG COMPILER LIBDIR WORKDIR [COMPONENT...]
# Compiles the consumers with what the installed .pc files say, and runs them. COMPILER may be several words.
set -eu
pkg_config=$1 compiler=$2 libdir=$3 workdir=$4
shift 4
sources=$(dirname "$0")/consumer

mkdir -p "$workdir"
export PKG_CONFIG_PATH="$libdir/pkgconfig"

# use PROGRAM MODULE
use() {
    # shellcheck disable=SC2046,SC2086  # the compiler and the flags are words
    $compiler -std=c++17 -c "$sources/$1.cc" -o "$workdir/$1.o" $("$pkg_config" --cflags "$2")
    # shellcheck disable=SC2046,SC2086
    $compiler "$workdir/$1.o" -o "$workdir/$1" $("$pkg_config" --libs "$2")
    echo "$1 with $2 $("$pkg_config" --modversion "$2")"
    LD_LIBRARY_PATH="$libdir" "$workdir/$1"
}

use values nkdt
use decimal96 nkdt
for component in "$@"; do
    use "$component" "nkdt-$component"
done
