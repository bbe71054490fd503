#!/usr/bin/env python3
"""What the hosted service would refuse, or do otherwise than it reads, in .github/workflows: read with PyYAML, whose
loader is told to refuse keys that stand twice. Every rule is also shown to see its fault.
usage: workflows_test.py"""
import copy
import pathlib
import re
import sys
import unittest

import yaml

ROOT = pathlib.Path(__file__).resolve().parents[2]
# Those that the service has in 2026-11; the newest Mac's is told by macos-latest.
RUNNERS = {"ubuntu-22.04", "ubuntu-24.04", "ubuntu-latest", "macos-15", "macos-26", "macos-latest"}
TOP_KEYS = {"name", "on", "permissions", "concurrency", "jobs", "env", "defaults"}
JOB_KEYS = {"name", "runs-on", "timeout-minutes", "steps", "strategy", "needs", "if", "env", "permissions", "outputs", "container",
            "services", "continue-on-error", "environment", "concurrency", "defaults"}
STEP_KEYS = {"name", "id", "if", "uses", "with", "run", "env", "shell", "working-directory", "continue-on-error", "timeout-minutes"}
EVENTS = {"push", "pull_request", "workflow_dispatch", "schedule", "release"}
CONTEXTS = {"github", "env", "vars", "job", "jobs", "steps", "runner", "secrets", "strategy", "matrix", "needs", "inputs"}
FUNCTIONS = {"hashFiles", "contains", "startsWith", "endsWith", "format", "join", "toJSON", "fromJSON", "success", "always",
             "cancelled", "failure"}


class Loader(yaml.SafeLoader):
    """Refuses a key that stands twice, which YAML lets win in silence."""

    def construct_mapping(self, node, deep=False):
        keys = [self.construct_object(key, deep=True) for key, _ in node.value]
        for key in keys:
            if keys.count(key) > 1:
                raise yaml.constructor.ConstructorError(None, None, f"the key {key} stands twice", node.start_mark)
        return super().construct_mapping(node, deep)


def texts_in(value):
    if isinstance(value, dict):
        for key, inner in value.items():
            yield str(key)
            yield from texts_in(inner)
    elif isinstance(value, list):
        for inner in value:
            yield from texts_in(inner)
    else:
        yield str(value)


def expression_faults(text, matrix, steps):
    rest = re.sub(r"\$\{\{.*?\}\}", "", text, flags=re.S)
    if "${{" in rest or "}}" in rest and "{{" in rest:
        yield f"an expression that does not end: {text}"
    for expression in re.findall(r"\$\{\{(.*?)\}\}", text, re.S):
        bare = re.sub(r"'[^']*'", "", expression)
        for name in re.findall(r"(?<![\w.-])([A-Za-z_][\w-]*)(?=\s*\()", bare):
            if name not in FUNCTIONS:
                yield f"no function {name}()"
        for path in re.findall(r"(?<![\w.-])([A-Za-z_][\w-]*(?:\.[\w-]+)*)(?!\s*[\w(.-])", bare):
            parts = path.split(".")
            if parts[0] not in CONTEXTS | {"true", "false", "null"}:
                yield f"nothing is called {parts[0]}"
            if parts[0] == "matrix" and len(parts) > 1 and parts[1] not in matrix:
                yield f"the matrix has no {parts[1]}"
            if parts[0] == "steps" and len(parts) > 1 and parts[1] not in steps:
                yield f"no step has the id {parts[1]}"


def runners_of(job, matrix):
    runner = str(job.get("runs-on", ""))
    found = re.fullmatch(r"\$\{\{ *matrix\.([\w-]+) *\}\}", runner)
    return [str(value) for value in matrix.get(found[1], [])] if found else [runner]


def step_faults(step, root):
    if not isinstance(step, dict):
        yield "a step is no mapping"
        return
    yield from (f"a step has no key {key}" for key in step.keys() - STEP_KEYS)
    if ("uses" in step) == ("run" in step):
        yield "a step either uses an action or runs commands"
    if "uses" in step and not re.fullmatch(r"[\w.-]+/[\w./-]+@[0-9a-f]{40}", str(step["uses"])):
        yield f"{step['uses']} is not held by its commit"
    if "with" in step and "uses" not in step:
        yield "only an action takes 'with'"
    for script in re.findall(r"(?:^|[\s;&|])\./((?:scripts|tools)/[\w./-]+)", str(step.get("run", ""))):
        path = root / script
        if not path.is_file() or not path.stat().st_mode & 0o111:
            yield f"{script} is no program of this checkout"


def job_faults(name, job, jobs, root):
    matrix = job.get("strategy", {}).get("matrix", {})
    steps = job.get("steps") or []
    ids = {step.get("id") for step in steps if isinstance(step, dict)}
    yield from (f"a job has no key {key}" for key in job.keys() - JOB_KEYS)
    runners = runners_of(job, matrix)
    yield from (f"there is no machine {runner!r}" for runner in runners or ["none"] if runner not in RUNNERS)
    if not isinstance(job.get("timeout-minutes"), int):
        yield "it may run for hours: no timeout-minutes"
    needs = job.get("needs", [])
    yield from (f"there is no job {other}" for other in ([needs] if isinstance(needs, str) else needs) if other not in jobs)
    if not steps:
        yield "it has no steps"
    for step in steps:
        yield from step_faults(step, root)
    for text in texts_in(job):
        yield from expression_faults(text, matrix, ids)


def faults_in(workflow, root=ROOT):
    """What is wrong with a workflow that has been read."""
    top = {("on" if key is True else key): value for key, value in workflow.items()}  # YAML 1.1 takes "on" for true
    yield from (f"a workflow has no key {key}" for key in top.keys() - TOP_KEYS)
    events = top.get("on")
    events = {events} if isinstance(events, str) else set(events or ())
    yield from (f"there is no event {event}" for event in events - EVENTS)
    if not events:
        yield "nothing starts it"
    if top.get("permissions") != {"contents": "read"}:
        yield "it may do more than read the sources"
    jobs = top.get("jobs") or {}
    if not jobs:
        yield "it has no jobs"
    for name, job in jobs.items():
        for fault in job_faults(name, job, jobs, root):
            yield f"{name}: {fault}"


def read(text):
    return yaml.load(text, Loader)


class Workflows(unittest.TestCase):
    files = sorted((ROOT / ".github/workflows").glob("*.y*ml"))

    def test_every_workflow_is_as_the_service_wants_it(self):
        self.assertTrue(self.files)
        for file in self.files:
            with self.subTest(file=file.name):
                self.assertEqual(list(faults_in(read(file.read_text(encoding="utf-8")))), [])

    def build(self):
        return read((ROOT / ".github/workflows/build.yml").read_text(encoding="utf-8"))

    def test_it_is_built_on_two_macs_one_of_them_the_newest(self):
        job = self.build()["jobs"]["macos"]
        self.assertEqual(runners_of(job, job["strategy"]["matrix"]), ["macos-15", "macos-latest"])
        self.assertIs(job["strategy"]["fail-fast"], False)

    def test_the_bundle_is_made_and_started(self):
        script = "\n".join(step.get("run", "") for step in self.build()["jobs"]["macos"]["steps"])
        self.assertRegex(script, r"bundle-macos\.sh\n *open dist/Vellmoor\.app\n *sleep 10\n *pgrep ")

    def test_a_release_is_made_of_what_was_installed_on_every_system(self):
        jobs = read((ROOT / ".github/workflows/release.yml").read_text(encoding="utf-8"))["jobs"]
        images = ["debian:12", "debian:13", "ubuntu:24.04", "ubuntu:26.04"]
        for name in ("packages", "installed"):
            self.assertEqual(jobs[name]["strategy"]["matrix"]["image"], images)
        self.assertEqual(jobs["installed"]["needs"], "packages")
        self.assertEqual(jobs["release"]["needs"], ["installed", "macos"])
        self.assertEqual([name for name, job in jobs.items() if "permissions" in job], ["release"])

    def test_a_key_that_stands_twice_is_seen(self):
        with self.assertRaises(yaml.YAMLError):
            read("jobs:\n  a: 1\n  a: 2\n")

    def test_each_fault_is_seen(self):
        def broken(change):
            workflow = copy.deepcopy(self.build())
            change(workflow, workflow["jobs"]["macos"], workflow["jobs"]["macos"]["steps"])
            return " / ".join(faults_in(workflow))

        plants = {
            "there is no machine 'macos-14'": lambda w, job, steps: job["strategy"]["matrix"]["system"].append("macos-14"),
            "the matrix has no os": lambda w, job, steps: job.update(name="${{ matrix.os }}"),
            "there is no machine": lambda w, job, steps: job.update({"runs-on": "${{ matrix.os }}"}),
            "no timeout-minutes": lambda w, job, steps: job.pop("timeout-minutes"),
            "is not held by its commit": lambda w, job, steps: steps[0].update(uses="actions/checkout@v4"),
            "either uses an action or runs": lambda w, job, steps: steps[0].update(run="true"),
            "a step has no key runs": lambda w, job, steps: steps[2].update(runs=steps[2].pop("run")),
            "scripts/tests.sh is no program": lambda w, job, steps: steps[2].update(run="./scripts/tests.sh"),
            "nothing is called git": lambda w, job, steps: steps[1]["with"].update(key="${{ git.sha }}"),
            "no function hashFile()": lambda w, job, steps: steps[1]["with"].update(key="${{ hashFile('a') }}"),
            "an expression that does not end": lambda w, job, steps: job.update(name="${{ matrix.system }"),
            "no step has the id made": lambda w, job, steps: steps[2].update({"if": "${{ steps.made.outcome }}"}),
            "there is no job lint": lambda w, job, steps: job.update(needs="lint"),
            "there is no event pushed": lambda w, job, steps: w.update({True: {"pushed": None}}),
            "more than read": lambda w, job, steps: w.update(permissions="write-all"),
            "it has no steps": lambda w, job, steps: job.update(steps=[]),
            "a job has no key run-on": lambda w, job, steps: job.update({"run-on": "macos-15"}),
            "a workflow has no key job": lambda w, job, steps: w.update(job={}),
        }
        for said, change in plants.items():
            with self.subTest(fault=said):
                self.assertIn(said, broken(change))


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
