#!/usr/bin/env bash
# Prints docs/rules.md from what the model says about its rules. usage: rules-doc.sh VRRP_VALID
set -euo pipefail
cat <<'END'
# The rules

*Made from `yang/router-vrrp.yang` by `make rules-doc`; `vrrp-valid explain` prints the same.*

A rule runs once for every node of the candidate configuration that is named under "Checks". `<name>` in a message is
the layer-3 interface: the text of the VRRP interface's key after its first `-`, or the whole key. A change is
refused when any rule reports an error; a warning has to be confirmed. When a rule fails without a message of its own
(the interface's `ipv6/enable` is configured but cannot be read), the finding names the node.

A rule cannot read a layer-3 interface whose name has a blank, a tab, a line end, a brace or a quote, since such a
name cannot be written in a path: it treats what it looks for as absent. A note in the finding says so; use another
name.

"Platform calls" counts the calls of one check: the reads through MAAPI and CDB, each a round trip to ConfD on a
router, and the calls of the host and for printing keypaths and keys. Left out are finding the MAAPI socket, which
every check does once, setting the message, and arithmetic on addresses. A rule that refuses early makes fewer.
END
"$1" explain --format markdown --verbose
