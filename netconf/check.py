#!/usr/bin/python3
# Holds a live server against the command: what it refuses, what it tells, and what it outlives.
# usage: check.py BUILD

import concurrent.futures
import contextlib
import json
import pathlib
import subprocess
import sys
import time

from lab import NETCONF, ROOT, commit, lab_of, nodes_in, request
from ncclient import NCClientError, transport, xml_

transport.ssh.TICK = 0.001  # for how many seconds a client lets a request lie
PRIORITY = """<router xmlns="urn:libvrrp-valid:router-vrrp"><vrrp><interface><name>l3-vlan30</name>
<address-family><family>ipv4</family><vr-id><id>30</id><priority>%d</priority></vr-id>
</address-family></interface></vrrp></router>"""
VLAN = """<config xmlns="urn:libvrrp-valid:l3-interface"><interface><l3><name>vlan30</name>
<lower-layer-if><vlan>1%d</vlan></lower-layer-if></l3></interface></config>"""
WRONG_PLUGIN = """extern "C" {
int lib_init() { return 0; }
int lib_finish() { return 0; }
int get_validation_point(char* to, int) { return std::strcpy(to, "vrrp_validation") == nullptr; }
int validate(void*, void*, void*) { %s; return 0; }
}"""
EXAMPLES = ROOT / "examples"
ROUTER = EXAMPLES / "router-running.xml"


def require(is_true, what):
    if not is_true:
        sys.exit(f"check-netconf: {what}")


# Has the server run what is in `file`, or nothing.
def set_running(client, file):
    for nodes in ("", nodes_in(file) if file.exists() else ""):
        errors = commit(client, request("copy-config", nodes))
        require(not errors, f"{file}: {errors}")


# Holds what the server says of a change to `running` against a check of `file`, or of the change.
def compare(lab, client, running, change, file=None):
    set_running(client, running)
    edit, before = lab.folder / "edit.xml", lab.folder / "running.xml"
    edit.write_bytes(xml_.etree.tostring(change))
    before.write_text(client.get_config("running").xml)
    options = ["--key-file", lab.folder / "router.key", "--running", before, file or edit]
    command = [lab.command, "check", "--format", "json", *options]
    report = json.loads(subprocess.run(command, stdout=subprocess.PIPE).stdout)["reports"][0]
    wanted = sorted((one["severity"], one["rule"], one["message"]) for one in report["findings"])
    is_refused = any(severity == "error" for severity, _, _ in wanted)
    client.dispatch(change)
    right = client.get_config("running" if is_refused else "candidate").data_xml
    told = sorted((one.severity, one.app_tag, one.message) for one in commit(client))
    what = f"{file or running.parent}: "
    require(told == wanted, f"{what}the server says {told}, the command {wanted}")
    require(client.get_config("running").data_xml == right, f"{what}something else runs")


def check_findings(lab, client):
    for candidate in sorted(EXAMPLES.glob("messages/*/candidate.*")):
        running, nodes = candidate.parent / "running.json", nodes_in(candidate)
        compare(lab, client, running, request("copy-config", nodes), candidate)
        compare(lab, client, running, request("edit-config", nodes))
    # A container without presence is not there while it is empty, but the server keeps it.
    empty = PRIORITY.replace("<priority>%d</priority>", "<address-link-local/>")
    compare(lab, client, ROUTER, request("edit-config", empty))
    for file in EXAMPLES.glob("forms/edit-*.xml"):
        change = xml_.to_ele(file.read_text().replace("<running/>", "<candidate/>"))
        compare(lab, client, ROUTER, next(change.iter(f"{{{NETCONF}}}edit-config")), file)


# How many pages of memory it costs the server that clients commit at the same time, each 500
# times with another number; each of these leads to what is wanted.
def growth(lab, *work):
    def commit_often(nodes, wanted):
        client = lab.connect()
        for number in range(500):
            while not client.lock("candidate").ok:
                time.sleep(0.001)
            change = request("edit-config", nodes % (number % 100 + 1))
            told = [one.app_tag for one in commit(client, change)]
            client.unlock("candidate")
            require(told == wanted, f"commit {number} of two clients: {told}, not {wanted}")

    statm = pathlib.Path(f"/proc/{lab.server.pid}/statm")
    before = int(statm.read_text().split()[1])
    with concurrent.futures.ThreadPoolExecutor() as clients:
        list(clients.map(commit_often, *zip(*work)))
    return int(statm.read_text().split()[1]) - before


# A thousand commits of two clients; netconfd alone keeps some memory of each that it takes.
def check_memory(lab, client):
    set_running(client, ROUTER)
    accepted = (PRIORITY, [])
    checked = growth(lab, accepted, (VLAN, ["vrrp_lower_layer_update_validation"]))
    lab.start(runpath=lab.folder)
    alone = growth(lab, accepted)
    require(checked < alone + 75, f"{checked} pages in place of netconfd's own {alone}")
    print(f"1000 commits, 500 refused: {checked} pages; netconfd alone, 500 commits: {alone} pages")


def check_wrong_plugins(lab):
    plugin = lab.folder / "wrong.so"
    headers = [part for name in ("csignal", "cstdlib", "cstring") for part in ("-include", name)]
    for wrong in ("throw 7", "std::exit(0)", "std::raise(SIGKILL)", "return 5"):
        command = ["c++", "-shared", "-fPIC", *headers, "-x", "c++", "-o", plugin, "-"]
        subprocess.run(command, input=WRONG_PLUGIN % wrong, text=True, check=True)
        client = lab.start(plugin)
        before = client.get_config("running").data_xml
        with contextlib.suppress(NCClientError):  # where the server goes, too
            change = request("copy-config", nodes_in(ROUTER))
            require(commit(client, change), f"{wrong}: committed")
        after = lab.start().get_config("running").data_xml
        require(after == before, f"{wrong}: something else runs")
    try:
        lab.start("missing.so")
    except SystemExit as log:
        require("router-vrrp: " in str(log), "the log does not say what is missing")
    else:
        require(False, "the server starts without its plug-in")


with lab_of(sys.argv[1]) as the_lab:
    the_client = the_lab.start()
    check_findings(the_lab, the_client)
    check_memory(the_lab, the_client)
    check_wrong_plugins(the_lab)
print("check-netconf: every commit was refused or taken as it had to be")
