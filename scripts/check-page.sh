#!/usr/bin/env bash
# Has a browser look at the page of --format html, in light and dark, wide and narrow: no error on the console,
# every finding's text there, links that lead somewhere, contrast and headings. The
# screenshots stay in BUILD_DIR/page. usage: check-page.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."
command=$(realpath "$1")/bin/vrrp-valid
pages=$(realpath "$1")/page
profile=$(mktemp -d)
trap 'rm -rf "$profile"' EXIT
rm -rf "$pages"
mkdir -p "$pages"

# usage: browse COLOUR_SCHEME SIZE ARGUMENT...; 0 is dark, 1 is light.
browse() {
  rm -rf "$profile"
  timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run --hide-scrollbars \
    --disable-background-networking --disable-component-update --disable-sync --user-data-dir="$profile" \
    --enable-logging=stderr --blink-settings=preferredColorScheme="$1" --window-size="$2" "${@:3}" 2>"$pages/log"
  ! grep CONSOLE "$pages/log" || { echo "the page says something on the console"; exit 1; }
}

make_page() {
  local name=$1 status=0
  shift
  "$command" check --format html "$@" >"$pages/$name.html" 2>/dev/null || status=$?
  "$command" check --format json "$@" >"$pages/$name.json" 2>/dev/null || [ $? -eq $status ]
  # A copy with the probe in it, whose policy lets it run.
  sed -e 's/<meta http-equiv[^>]*>//' \
    -e 's|</main>|</main><script id="probe" src="../../scripts/page-probe.js"><!----></script>|' \
    "$pages/$name.html" >"$pages/$name-probed.html"
  sed -i "s|\.\./\.\./scripts|$PWD/scripts|" "$pages/$name-probed.html"
}

make_page refused --running examples/router-running.json examples/router-refused.json
make_page accepted --running examples/router-running.xml examples/router-accepted.xml
make_page several --accept-warnings examples/messages/*/candidate.* "$pages/missing"$'\n'.json

for page in refused accepted several; do
  for scheme in 0 1; do
    for size in 1200,1600 1000,900 500,1200; do
      browse "$scheme" "$size" --dump-dom "file://$pages/$page-probed.html" >"$pages/dom"
      said=$(grep -o '<title>[^<]*' "$pages/dom" | head -1)
      case $said in
        "<title>dark: good" | "<title>light: good") ;;
        *) printf '%s, %s: %s\n' "$page" "$size" "$said"; exit 1 ;;
      esac
      [[ $said == *"$([ "$scheme" = 0 ] && echo dark || echo light)"* ]] || { echo "the colours do not change"; exit 1; }
    done
    browse "$scheme" 1200,2400 --screenshot="$pages/$page-$scheme.png" "file://$pages/$page.html"
  done
  /usr/bin/python3 - "$pages/$page.json" "$pages/dom" <<'PYTHON'
import html, json, re, sys
report = json.load(open(sys.argv[1], encoding="utf-8"))
text = html.unescape(re.sub(r"<[^>]*>", "", open(sys.argv[2], encoding="utf-8").read()))
for one in report["reports"]:
    wanted = [one["candidate"], one["error"].split(": ")[-1]]
    for finding in one["findings"]:
        wanted += [finding[part] for part in ("message", "cli_path", "help", "rule")]
        wanted += [value["value"] for value in finding["values"]]
    for part in wanted:
        assert part in text, part
PYTHON
done
echo "pages: 3 in 2 colour schemes and 3 sizes good, screenshots in $pages"
