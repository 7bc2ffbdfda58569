#!/usr/bin/python3
# An evening in the lab: a live NETCONF server refuses a commit, and takes a better one.
# usage: demo.py BUILD

import sys

from lab import ROOT, commit, lab_of, nodes_in, request

running = nodes_in(ROOT / "examples/router-running.xml")
accepted = nodes_in(ROOT / "examples/router-accepted.xml")
twice = running.replace("<id>20<", "<id>10<", 1)
steps = (
    ("The router's configuration:", running, True),
    ("VR-ID 10, which l3-vlan10 has, for l3-vlan20:", twice, False),
    ("IPv6 for vlan30, and VRRP on the new vlan40:", accepted, True),
)
with lab_of(sys.argv[1]) as lab:
    client = lab.start()
    print(f"netconfd with the plug-in, on port {lab.port} of the loopback")
    for what, nodes, is_accepted in steps:
        errors = commit(client, request("copy-config", nodes))
        print(f"\n{what} {'refused, the router runs on as it did' if errors else 'committed'}")
        for one in errors:
            print(f"  {one.severity}: {one.message}\n    {one.app_tag}\n    {one.path}")
        if is_accepted == bool(errors):
            sys.exit("demo: the server was expected to answer otherwise")
print("\nThe server is ended, and its keys and files are removed.")
