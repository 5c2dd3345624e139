#!/usr/bin/env python3
"""Looks at the workflow of the continuous integration: whether it is what its service reads, and names only what exists.

usage: workflow_test.py PROJECT [WORKFLOW]
With a workflow of its own it says what is wrong there, and fails. Without, it looks at the project's, and then shows that
each kind of mistake would be found in it.
"""
import os
import re
import subprocess
import sys

import yaml

FILE = ".github/workflows/ci.yml"
EVENTS = {"push", "pull_request", "schedule", "workflow_dispatch"}
OF_WORKFLOW = {"name", "on", "permissions", "defaults", "jobs"}
OF_JOB = {"if", "runs-on", "container", "timeout-minutes", "env", "steps", "needs"}
OF_STEP = {"name", "uses", "with", "run", "if"}
# What these actions take; they cannot be asked here.
ACTIONS = {"actions/checkout": set(), "actions/cache": {"path", "key", "restore-keys"},
           "actions/upload-artifact": {"name", "path", "if-no-files-found"}}
# These prepare the machine for the scripts.
PLAIN = {"apt-get", "git"}
CONTEXTS = re.compile(r"github\.(sha|run_id|event_name)|hashFiles\(('[^']+'(, )?)+\)")


class StrictLoader(yaml.SafeLoader):
    """Refuses a key that is there twice, and takes `on` for a word."""

    def construct_mapping(self, node, deep=False):
        seen = set()
        for key, _ in node.value:
            if key.value in seen:
                raise yaml.YAMLError(f"{key.start_mark}: '{key.value}' is there twice")
            seen.add(key.value)
        return super().construct_mapping(node, deep)


StrictLoader.yaml_implicit_resolvers = {
    first: [(tag, pattern) for tag, pattern in resolvers if tag != "tag:yaml.org,2002:bool"]
    for first, resolvers in yaml.SafeLoader.yaml_implicit_resolvers.items()}
StrictLoader.add_implicit_resolver("tag:yaml.org,2002:bool", re.compile("^(true|false)$"), list("tf"))


class Workflow:
    def __init__(self, project, text):
        self.project = project
        self.text = text
        self.complaints = []
        with open(os.path.join(project, "dev"), encoding="utf-8") as file:
            self.dev = file.read()
        self.scripts = self.dev
        for folder in (".ci", "tools/windows", "cmake/toolchains"):
            for name in sorted(os.listdir(os.path.join(project, folder))):
                path = os.path.join(project, folder, name)
                if os.path.isfile(path):
                    with open(path, encoding="utf-8") as file:
                        self.scripts += file.read()

    def complain(self, text):
        self.complaints.append(text)

    def keys(self, what, mapping, known):
        if not isinstance(mapping, dict):
            self.complain(f"{what} is no mapping")
            return {}
        for key in mapping:
            if key not in known:
                self.complain(f"{what} has '{key}', which is unknown there")
        return mapping

    def look(self):
        try:
            workflow = yaml.load(self.text, StrictLoader)
        except yaml.YAMLError as error:
            return [str(error)]
        workflow = self.keys("the workflow", workflow, OF_WORKFLOW)
        self.keys("'on'", workflow.get("on"), EVENTS)
        jobs = workflow.get("jobs") or {}
        if not jobs:
            self.complain("there are no jobs")
        for name, job in jobs.items():
            self.look_at_job(name, job, jobs)
        for expression in re.findall(r"\$\{\{(.*?)\}\}", self.text):
            if not CONTEXTS.fullmatch(expression.strip()):
                self.complain(f"the expression '{expression.strip()}' is unknown")
        for pattern in re.findall(r"'([^']+)'", " ".join(re.findall(r"hashFiles\(.*?\)", self.text))):
            if not self.tracked(pattern):
                self.complain(f"no file of the project is '{pattern}'")
        return self.complaints

    def look_at_job(self, name, job, jobs):
        job = self.keys(f"job {name}", job, OF_JOB)
        for key in ("runs-on", "timeout-minutes", "steps"):
            if key not in job:
                self.complain(f"job {name} has no '{key}'")
        if job.get("needs", name) not in jobs:
            self.complain(f"job {name} needs the job '{job['needs']}', which is not there")
        for variable in job.get("env", {}):
            if variable.startswith("ZET_") and variable not in self.scripts:
                self.complain(f"job {name} sets {variable}, which no script reads")
        checked_out = False
        for step in job.get("steps", []):
            step = self.keys(f"a step of {name}", step, OF_STEP)
            if ("run" in step) == ("uses" in step):
                self.complain(f"a step of {name} has not just one of 'run' and 'uses': {step}")
            if "uses" in step:
                self.look_at_action(name, step)
                checked_out = checked_out or step["uses"].startswith("actions/checkout@")
            for command in re.split(r"&&|\n", str(step.get("run", ""))):
                self.look_at_command(name, command.split(), checked_out)

    def look_at_action(self, job, step):
        action, _, version = str(step["uses"]).partition("@")
        if action not in ACTIONS or not re.fullmatch(r"v\d+", version):
            self.complain(f"job {job} uses the action '{step['uses']}', which is unknown")
            return
        given = self.keys(f"the action {action} of {job}", step.get("with", {}), ACTIONS[action])
        for path in str(given.get("path", "")).split():
            if path.startswith(("/", "!")):
                continue
            # A script names these files, or at least the folder in which all of them are.
            pattern = re.escape(path).replace(r"\*", r"[^ \"']*")
            folder = os.path.dirname(pattern) + r"\b" if "*" in os.path.basename(path) else pattern
            if not re.search(pattern, self.scripts) and not re.search(folder, self.scripts):
                self.complain(f"job {job} names '{path}', which no script makes")

    def look_at_command(self, job, words, checked_out):
        if not words or words[0] in PLAIN:
            return
        script = words[0].removeprefix("./")
        if not self.tracked(script) or not os.access(os.path.join(self.project, script), os.X_OK):
            self.complain(f"job {job} runs '{words[0]}', which is no script of the project")
            return
        if not checked_out:
            self.complain(f"job {job} runs '{words[0]}' before the checkout")
        if script == "dev" and not re.search(rf"^  {re.escape((words + ['?'])[1])}\b", self.dev, re.MULTILINE):
            self.complain(f"job {job} runs '{' '.join(words)}', a command that ./dev does not have")

    def tracked(self, pattern):
        found = subprocess.run(["git", "-C", self.project, "ls-files", "--", pattern], check=False, text=True,
                               capture_output=True).stdout
        return bool(found) or (not os.path.exists(os.path.join(self.project, ".git")) and
                               os.path.exists(os.path.join(self.project, pattern)))


# What is put in place of what, and a part of what must be said then.
MISTAKES = [
    ("run: .ci/run", "run: .ci/walk", "'.ci/walk', which is no script"),
    ("run: ./dev package", "run: ./dev pack", "./dev does not have"),
    ("run: ./dev package", "run: README.md", "'README.md', which is no script"),
    ("run: .ci/windows", "run: make all", "'make', which is no script"),
    ("      - uses: actions/checkout@v4\n", "", "before the checkout"),
    ("actions/cache@v4", "actions/cash@v4", "'actions/cash@v4', which is unknown"),
    ("actions/cache@v4", "actions/cache", "which is unknown"),
    ("if-no-files-found: error", "if-no-file-found: error", "'if-no-file-found', which is unknown"),
    ("github.sha", "github.sah", "'github.sah' is unknown"),
    ("'tools/windows/dependencies'", "'tools/windows/dependency'", "is 'tools/windows/dependency'"),
    ("build/fuzz/corpus", "build/fuzz/corpse", "'build/fuzz/corpse', which no script makes"),
    ("build/package/packages/", "build/packages/", "which no script makes"),
    ("ZET_WINDOWS_CACHE:", "ZET_WINDOWS_STORE:", "ZET_WINDOWS_STORE, which no script reads"),
    ("    timeout-minutes: 300\n", "", "has no 'timeout-minutes'"),
    ("    container: debian:12\n", "    container: debian:12\n    container: debian:13\n", "is there twice"),
    ("  pull_request:", "  pull_requests:", "'pull_requests', which is unknown"),
    ("        run: .ci/run\n", "        run: .ci/run\n        uses: actions/checkout@v4\n", "just one of"),
    ("steps:", "steps: [", "ci.yml|expected|while parsing"),
]


def main(project, workflow=None):
    with open(workflow or os.path.join(project, FILE), encoding="utf-8") as file:
        text = file.read()
    complaints = Workflow(project, text).look()
    if complaints:
        sys.exit("\n".join(f"{workflow or FILE}: {complaint}" for complaint in complaints))
    if workflow:
        return
    for good, bad, said in MISTAKES:
        if good not in text:
            sys.exit(f"'{good}' is not in {FILE} any more, so that a mistake there is not tried")
        complaints = "\n".join(Workflow(project, text.replace(good, bad)).look())
        if not any(each in complaints for each in said.split("|")):
            sys.exit(f"with '{bad}' for '{good}' this was said:\n{complaints}")
    print(f"{FILE} is well, and {len(MISTAKES)} mistakes in it are found")


main(*sys.argv[1:])
