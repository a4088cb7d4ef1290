#!/bin/sh
# Takes the README's pictures of the demo's report page with headless
# Chromium: doc/report_page.png, the top of the page (summary, pin map, the
# first rows of the signal table), and doc/report_curves.png, the charts of
# the demo model that has waveforms (the page with its other sections left
# out). Run it after `make demo`, from the top of the tree.
#   doc/screenshots.sh [BROWSER]      (default: chromium-headless-shell)
set -eu
browser=${1:-chromium-headless-shell}
page=$(pwd)/build/demo/page/demo_report.html
[ -f "$page" ] || { echo "screenshots.sh: no $page; run make demo first" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

shot() { # shot URL WIDTH,HEIGHT PNG
    "$browser" --headless --no-sandbox --disable-gpu --disable-quic --no-first-run \
        --disable-background-networking --disable-component-update --disable-sync \
        --user-data-dir="$work/profile" --hide-scrollbars --window-size="$2" \
        --screenshot="$3" "$1" 2>/dev/null
}

shot "file://$page" 1100,1020 doc/report_page.png
awk '/<body>/ { print; skip = 1; next }
     /<article class="model" id="model-[0-9]+" data-model="lvc330s080naaaaaaaou">/ { skip = 0 }
     !skip { print }
     /<\/article>/ && !skip { print "</body></html>"; exit }' "$page" > "$work/curves.html"
shot "file://$work/curves.html" 1100,690 doc/report_curves.png
ls -l doc/report_page.png doc/report_curves.png
