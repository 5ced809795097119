#!/bin/sh
# build_and_run.sh COMPILER FOLDER [FLAGS...]: as a C project would build, with pkg-config alone.
set -eu
compiler=$1
folder=$2
shift 2
mkdir -p "$folder"
# Flags are words here, one or several.
# shellcheck disable=SC2046,SC2048,SC2086
$compiler -std=c99 -Wall -Wextra -Wpedantic -Werror $* "$(dirname "$0")/main.c" \
  $(pkg-config --cflags --libs quantiverse) -o "$folder/program"
"$folder/program"
