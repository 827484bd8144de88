#!/bin/sh
# SPDX-License-Identifier: MIT
# Converts every drawing below a folder by GNU parallel, which can use other machines as well.
#
#   parallel.sh DRAWINGS FOLDER [OPTIONS OF GNU PARALLEL]
#
# As with --sshlogin this-machine,that-machine --workdir . where both see these folders by the same names.
# FOLDER.joblog tells exit code and time of each; --resume-failed goes on with what has failed.
set -eu
drawings=$1 folder=$2
shift 2
tesselink batch --dialect standard --to dxf --into "$folder" -O --dry-run "$drawings" |
  parallel --joblog "$folder.joblog" "$@"
