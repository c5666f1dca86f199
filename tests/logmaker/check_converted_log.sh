#!/usr/bin/env bash
# check_converted_log.sh MAKER VIEWER [MAKER OPTION...]
# Makes a log, converts it and checks every message of the document against the maker's record.
set -euo pipefail
maker=$1
viewer=$2
shift 2
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT

"$maker" -o "$directory/run.log" --record "$directory/record.jsonl" "$@"
"$viewer" view "$directory/run.log" -o "$directory/run.json"
/usr/bin/python3 "$(dirname "$0")/check_record.py" "$directory/run.json" "$directory/record.jsonl"
