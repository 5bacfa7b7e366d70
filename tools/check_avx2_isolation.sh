#!/usr/bin/env bash
# The library must run on processors without AVX: VEX-encoded instructions may
# appear only in the 256-bit block functions, which run after a processor check.
# Lists any other function of the shared object that contains one, and fails.
set -euo pipefail
lib=$1
command -v objdump >/dev/null || { echo "objdump not found: skipped"; exit 0; }
leaks=$(objdump -d --no-show-raw-insn "$lib" |
  awk '/^[0-9a-f]+ <.*>:$/ {fn = $2} $2 ~ /^v[a-z]/ {print fn}' | sort -u | c++filt |
  grep -v -E 'Wide|wide|avx2|Avx2' || true)
if [ -n "$leaks" ]; then
  echo "AVX instructions outside the 256-bit blocks:"
  echo "$leaks"
  exit 1
fi
echo "no AVX instructions outside the 256-bit blocks"
