#!/bin/sh
# Usage: pkg_config.sh PKG_CONFIG COMPILER LIBDIR WORKDIR
# Compiles the consumer with what the installed nkdt.pc says, and runs it.
set -eu
pkg_config=$1 compiler=$2 libdir=$3 workdir=$4
source=$(dirname "$0")/consumer/main.cc

mkdir -p "$workdir"
export PKG_CONFIG_PATH="$libdir/pkgconfig"
# shellcheck disable=SC2046  # the flags are words
"$compiler" -std=c++17 "$source" -o "$workdir/consumer" $("$pkg_config" --cflags --libs nkdt)
LD_LIBRARY_PATH="$libdir" "$workdir/consumer"
