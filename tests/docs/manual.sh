#!/bin/sh
# Builds the reference manual into another folder: manual.sh DOXYGEN FOLDER
set -eu
mkdir -p "$2"
{ cat docs/Doxyfile; echo "OUTPUT_DIRECTORY = \"$2\""; } | "$1" -
test -s "$2/html/classNkDtLong.html"
test -s "$2/html/md_docs_first_steps.html"
