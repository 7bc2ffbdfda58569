#!/usr/bin/env bash
# Does on a bare Debian 13, which has another libyang, what the README begins with, and uses what `make package` makes.
# Needs root, for chroot.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/bare-root.sh
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
make_root trixie "$root"
mkdir "$root/tree"
git ls-files -z | xargs -0 cp --parents -t "$root/tree"

in_root apt-get install -y -qq --no-install-recommends make git >/dev/null
for target in test demo "deps FOR=package" package; do
  # shellcheck disable=SC2086
  in_root make -C /tree $target
done
in_root sh -c 'apt-get install -y -qq /tree/build-package/*.deb' >/dev/null
in_root vrrp-valid check --running /tree/examples/router-running.json /tree/examples/router-accepted.json
