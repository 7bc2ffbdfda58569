"""Reads the reports in a folder as their users do, and holds the formats against each other.

usage: read_reports.py REPORT_SCHEMA FOLDER
"""

import json
import pathlib
import re
import sys

import jsonschema
import junitparser

SEVERITIES = {"info", "minor", "major", "critical", "blocker"}
COMMAND = re.compile(
    r"::(error|warning|notice) file=([^,:]+)(?:,line=(\d+))?(?:,col=(\d+))?,title=([^,:]+)::(.+)"
)


def read_json(schema, text):
    document = json.loads(text)
    jsonschema.Draft7Validator(schema).validate(document)
    return document


def check_junit(path, document):
    suites = junitparser.JUnitXml.fromfile(str(path))
    tests = [(suite, case) for suite in suites for case in suite]
    assert len(list(suites)) == len(document["reports"])
    assert sum(suite.tests for suite in suites) == len(tests)
    broken = {suite.name for suite, case in tests for one in case.result if isinstance(one, junitparser.Error)}
    assert len(broken) == document["summary"]["not_checked"], broken
    for suite, case in tests:
        assert case.name and case.classname == suite.name
        assert case._elem.get("file") == suite.name
        for one in case.result:
            if isinstance(one, junitparser.Failure):
                assert one.message and one.text.strip(), case.name
    for suite, report in zip(suites, document["reports"]):
        failed = {case.name for case in suite if any(isinstance(one, junitparser.Failure) for one in case.result)}
        errors = {finding["rule"] for finding in report["findings"] if finding["severity"] == "error"}
        assert errors <= failed, (errors, failed)
        assert float(suite.time) >= 0


def check_gitlab(text, document):
    issues = json.loads(text)
    findings = sum(len(report["findings"]) for report in document["reports"])
    found = [issue for issue in issues if issue["check_name"] != "note"]
    assert len(found) == findings + document["summary"]["not_checked"]
    assert len({issue["fingerprint"] for issue in issues}) == len(issues), "two issues look like one"
    for issue in issues:
        assert issue["description"] and issue["check_name"]
        assert issue["severity"] in SEVERITIES
        path = issue["location"]["path"]
        assert path and not path.startswith("./")
        assert issue["location"]["lines"]["begin"] >= 1


def check_github(text, document):
    lines = text.removesuffix("\n").split("\n")
    commands = [COMMAND.fullmatch(line) for line in lines]
    assert all(commands), lines
    findings = sum(len(report["findings"]) for report in document["reports"])
    assert len(commands) == findings + document["summary"]["not_checked"] + len(document["reports"])


def check_sarif(text, document):
    (run,) = json.loads(text)["runs"]
    rules = [rule["id"] for rule in run["tool"]["driver"]["rules"]]
    broken = document["summary"]["not_checked"]
    found = [result for result in run["results"] if result["ruleId"] != "not-checked"]
    assert len(run["results"]) - len(found) == broken
    assert len(found) == sum(len(report["findings"]) for report in document["reports"])
    for result in run["results"]:
        assert result["ruleId"] in rules
    (invocation,) = run["invocations"]
    assert invocation["executionSuccessful"] == (broken == 0)


def check_status(status, document):
    summary = document["summary"]
    expected = 2 if summary["not_checked"] else 1 if summary["errors"] else {0, 3}
    assert status in (expected if isinstance(expected, set) else {expected}), status


def main(schema_file, folder):
    schema = json.loads(pathlib.Path(schema_file).read_text(encoding="utf-8"))
    jsonschema.Draft7Validator.check_schema(schema)
    names = sorted(path.stem for path in pathlib.Path(folder).glob("*.status"))
    for name in names:
        path = pathlib.Path(folder) / name
        text = {kind: path.with_suffix("." + kind).read_text(encoding="utf-8")
                for kind in ("json", "junit", "github", "gitlab", "sarif", "status")}
        document = read_json(schema, text["json"])
        check_junit(path.with_suffix(".junit"), document)
        check_gitlab(text["gitlab"], document)
        check_github(text["github"], document)
        check_sarif(text["sarif"], document)
        check_status(int(text["status"]), document)
    assert names, "no report was made"
    print(f"jsonschema, junitparser: {len(names)} reports in 5 formats agree")


main(*sys.argv[1:])
