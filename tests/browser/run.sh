#!/bin/sh
# Checks reports in a browser: what they show and do, how they look, and how fast they are.
# Usage: run.sh KIVSYS FOLDER
# FOLDER is deleted and created again. Its pictures are in FOLDER/pictures.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
KIVSYS=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
rm -rf "$2"
mkdir -p "$2"
WORK=$(cd "$2" && pwd)
export KIVSYS WORK
cd "$here"
# Measurements are taken by themselves.
node --test --test-reporter=dot --test-concurrency=2 report.test.mjs report_use.test.mjs look.test.mjs survey.test.mjs
node --test --test-reporter=spec speed.test.mjs
