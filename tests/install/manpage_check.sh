#!/bin/sh
# Keeps the manual page honest: every option that the program's --help lists
# appears in the page, and the page renders without warnings where groff or
# man is on the machine.
# Usage: manpage_check.sh PROGRAM PAGE
set -u
program=$1
page=$2
status=0

help=$("$program" --help) || { echo "manpage-check: $program --help failed"; exit 1; }
options=$(printf '%s\n' "$help" | grep -oE -- '--[a-z][a-z0-9-]*' | sort -u)
if [ -z "$options" ]; then
    echo "manpage-check: $program --help lists no options"
    exit 1
fi
# In the page an option's dashes are written \-.
text=$(sed 's/\\-/-/g' "$page") || exit 1
count=0
for option in $options; do
    count=$((count + 1))
    if ! printf '%s\n' "$text" | grep -qE -- "${option}([^a-z0-9-]|\$)"; then
        echo "manpage-check: $page does not mention $option"
        status=1
    fi
done
echo "manpage-check: $count options of --help looked up in $page"

if command -v groff >/dev/null 2>&1; then
    warnings=$(groff -man -Tutf8 -ww -z "$page" 2>&1)
    renderer="groff -man -Tutf8 -ww"
elif command -v man >/dev/null 2>&1; then
    warnings=$(MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null)
    renderer="man --warnings -l"
else
    echo "manpage-check: rendering skipped, neither groff nor man is on this machine"
    exit $status
fi
if [ -n "$warnings" ]; then
    echo "manpage-check: $renderer warns on $page:"
    printf '%s\n' "$warnings"
    status=1
else
    echo "manpage-check: $renderer renders $page without warnings"
fi
exit $status
