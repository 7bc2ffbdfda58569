#!/usr/bin/env bash
# Prints docs/rules.md from what the model says about its rules. usage: rules-doc.sh VRRP_VALID
set -euo pipefail
cat <<'END'
# The rules

*Made from `yang/router-vrrp.yang` by `make rules-doc`; `vrrp-valid explain` prints the same.*

A rule runs once for every node named under "Runs on" in the candidate configuration. `<name>` in a message is
the layer-3 interface: the text of the VRRP interface's key after its first `-`, or the whole key. A change is
refused when any rule answers with an error; a warning has to be confirmed. A refusal without a message of the
rule's own (the interface's `ipv6/enable` is there but cannot be read) is named by its node.

A rule cannot look at a layer-3 interface whose name has a blank, a tab, a line end, a brace or a quote, since
such a name cannot be written in a path: it takes what it looks for as absent. A finding on such an interface
says so in a note; use another name.

"Platform calls" counts what one request costs: the reads through MAAPI and CDB, each a round trip to ConfD on a
router, and what the host and the printing of keypaths and keys add. Left out are finding the MAAPI socket,
which every request does once, setting the message, and arithmetic on addresses. A rule that refuses early
makes fewer.
END
"$1" explain --format markdown --verbose
