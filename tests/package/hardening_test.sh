#!/bin/sh
# Looks for the hardening in built files: hardening_test.sh program|plug-in FILE...
set -u
kind=$1
shift
status=0

complain() {
  echo "$1: $2" >&2
  status=1
}

for file in "$@"; do
  header=$(readelf --wide --file-header "$file")
  segments=$(readelf --wide --program-headers "$file")
  dynamic=$(readelf --wide --dynamic "$file")
  symbols=$(readelf --wide --dyn-syms "$file")
  echo "$segments" | grep -q 'GNU_RELRO' || complain "$file" "no RELRO"
  echo "$dynamic" | grep -q 'BIND_NOW\|FLAGS.*NOW' || complain "$file" "symbols are bound late"
  echo "$segments" | grep 'GNU_STACK' | grep -q 'RWE' && complain "$file" "the stack is executable"
  echo "$symbols" | grep -q '__stack_chk_fail' || complain "$file" "no stack protector"
  echo "$header" | grep -q 'Type: *DYN' || complain "$file" "not position-independent"
  # The programs make no call that has a fortified form.
  case $file in
  */vyn-profile-viewer | */vyn-make-log) ;;
  *) echo "$symbols" | grep -q '_chk@' || complain "$file" "no call is fortified" ;;
  esac
  if [ "$kind" = program ]; then
    echo "$dynamic" | grep -q 'FLAGS_1.*PIE' || complain "$file" "no PIE"
  fi
done
exit $status
