#!/usr/bin/env python3
"""Counts the instructions of a check at n, 2n and 4n of everything that a file can repeat: what a doubling adds must
double, too. A small file that takes long stops a whole fleet's run. usage: growth-test.py VRRP-VALID [N]"""
import re
import subprocess
import sys
import tempfile

NAMESPACE = "urn:libvrrp-valid:l3-interface"
command, n = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 500


def json_l3(entries):
    return '{"l3-interface:config":{"interface":{"l3":[' + ",".join(entries) + "]}}}"


def xml_config(content):
    return f'<config xmlns="{NAMESPACE}">{content}</config>'


def times(text):
    """A text for each number, which is put in place of %."""
    return lambda count: [text.replace("%", str(i)) for i in range(count)]


shapes = {
    "JSON: entries": lambda n: json_l3(times('{"name":"v%","vrf":"a"}')(n)),
    "JSON: keys last": lambda n: json_l3(times('{"vrf":"a","name":"v%"}')(n)),
    "JSON: an entry again": lambda n: json_l3(times('{"name":"v"}')(n)),
    "JSON: escapes": lambda n: json_l3(['{"name":"a","vrf":"' + "\\\\" * n + '"}']),
    "JSON: unknown modules": lambda n: "{" + ",".join(times('"o%:a":1')(n)) + "}",
    "JSON: unknown nodes": lambda n: '{"l3-interface:config":{' + ",".join(times('"x%":1')(n)) + "}}",
    "JSON: unknown values": lambda n: '{"o:a":[' + ",".join(times('{"b":%}')(n)) + "]}",
    "JSON: annotations": lambda n: '{"l3-interface:config":{' + ",".join(times('"@x%":{}')(n)) + "}}",
    "XML: entries": lambda n: xml_config("<interface>" + "".join(times("<l3><name>v%</name></l3>")(n)) + "</interface>"),
    "XML: outermost elements": lambda n: "".join(times('<a xmlns="urn:o"/>')(n)),
    "XML: namespaces": lambda n: "".join(times('<a xmlns="urn:o%"/>')(n)),
    "XML: prefixes": lambda n: '<a xmlns="urn:o" ' + " ".join(times('xmlns:p%="urn:p%"')(n)) + "/>",
    "XML: attributes": lambda n: '<a xmlns="urn:o" ' + " ".join(times('q%="1"')(n)) + "/>",
    "XML: unknown nodes": lambda n: xml_config("<q/>" * n),
    "XML: comments": lambda n: xml_config("<!-- -->" * n),
    "XML: pieces of text": lambda n: xml_config("<interface><l3><name>a</name><vrf>" + "&#65;" * n +
                                                "</vrf></l3></interface>"),
}


def instructions(text):
    with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
        file.write(text)
        file.flush()
        run = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", command, "check",
                              "--ignore-unknown", file.name], capture_output=True, text=True)
        return int(re.search(r"Collected : (\d+)", run.stderr)[1])


failed = False
for name, shape in shapes.items():
    once, twice, four_times = (instructions(shape(n * factor)) for factor in (1, 2, 4))
    growth = (four_times - twice) / max(twice - once, n)
    print(f"{name}: {(four_times - twice) // (2 * n)} instructions each, growth {growth:.2f}")
    failed |= growth > 2.7
sys.exit("something takes longer than its size: see the growth above 2.7" if failed else 0)
