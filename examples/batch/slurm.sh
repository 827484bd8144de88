#!/bin/bash
# SPDX-License-Identifier: MIT
#SBATCH --job-name=tesselink
#SBATCH --cpus-per-task=1
#SBATCH --mem=200M
#SBATCH --time=1:00:00
# A job array of Slurm, each task a hundred drawings:
#
#   tesselink batch --dialect standard --to dxf --into FOLDER -O --dry-run DRAWINGS > commands
#   sbatch --array=1-$(( ($(wc -l < commands) + 99) / 100 )) slurm.sh commands
set -u
commands=$1 size=${2:-100} failed=0
first=$(( (SLURM_ARRAY_TASK_ID - 1) * size + 1 ))
while IFS= read -r command; do
  sh -c "$command" < /dev/null || { failed=$((failed + 1)); printf 'failed: %s\n' "$command" >&2; }
done < <(sed -n "$first,$((first + size - 1))p" "$commands")
[ "$failed" -eq 0 ]
