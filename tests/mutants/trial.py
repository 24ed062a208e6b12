"""The tests, and how they are run on a mutant."""

import dataclasses
import itertools
import json
import os
import pathlib
import re
import select
import signal
import subprocess
import tempfile
import time

from build import BUILD, say

LEFT_OUT = re.compile(r"(Threads|In|install|gdb)\.|docs\.api|.*NOT_BUILT")
SLOW = 0.2  # seconds
LEAST_LIMIT = 10
MOST_HANGS = 3
EVENT = re.compile(r"\[ +(RUN|OK|FAILED|SKIPPED) +\] ([\w/.]+)")
STOP = object()


@dataclasses.dataclass
class Test:
    name: str
    command: list
    environment: dict
    filter: str  # by which its program can run it together with others; empty for a program of its own
    seconds: float = 60  # until it is known
    reached: bytes = b""  # by the numbers of the mutants

    @property
    def limit(self):
        return patient(max(LEAST_LIMIT, 10 * self.seconds))


def patient(seconds):
    """More time where others want the machine too."""
    return seconds * max(1, os.getloadavg()[0] / os.cpu_count())


def find_tests():
    """The tests of the build, except those that repeat others or try the build itself; prepares what they need."""
    listed = subprocess.check_output(["ctest", "--test-dir", BUILD, "--show-only=json-v1"])
    tests = []
    for each in json.loads(listed)["tests"]:
        properties = {p["name"]: p["value"] for p in each.get("properties", [])}
        if "FIXTURES_SETUP" in properties:
            subprocess.run(each["command"], check=True, stdout=subprocess.DEVNULL)
        elif not LEFT_OUT.match(each["name"]):
            environment = dict(setting.split("=", 1) for setting in properties.get("ENVIRONMENT", []))
            filters = [word.split("=", 1)[1] for word in each["command"] if word.startswith("--gtest_filter=")]
            tests.append(Test(each["name"], each["command"], environment, "".join(filters)))
    return tests


def follow(command, environment, limit, hear=lambda line: None):
    """Runs a process, and ends it after `limit` seconds. `hear` gets each line of its output, and may give seconds from
    then on, or STOP. Gives the exit code; None for a process that was ended."""
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as scratch:
        os.chmod(scratch, 0o777)
        process = subprocess.Popen(
            command, cwd=scratch, env={**os.environ, **environment, "TMPDIR": scratch}, start_new_session=True,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)  # fmt: skip
        try:
            return process.wait(patient(LEAST_LIMIT)) if is_heard_out(process, limit, hear) else None
        except subprocess.TimeoutExpired:
            return None
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()
            process.stdout.close()


def is_heard_out(process, limit, hear):
    """Whether the output came to its end in time, and was not stopped."""
    deadline, rest = time.monotonic() + limit, b""
    while select.select([process.stdout], [], [], max(0, deadline - time.monotonic()))[0]:
        data = os.read(process.stdout.fileno(), 1 << 16)
        if not data:
            return True
        *lines, rest = (rest + data).split(b"\n")
        for answer in (hear(line.decode(errors="replace")) for line in lines):
            if answer is STOP:
                return False
            if answer is not None:
                deadline = time.monotonic() + answer
    return False


def together(tests, environment, is_matrix):
    """Runs tests of one program, and goes on behind one that ends or blocks it. Gives those that fail, and those that
    were not run since too many block it; without a matrix the first that fails alone."""
    waiting, failed, hangs, running = {test.filter: test for test in tests}, [], 0, None

    def hear(line):
        nonlocal running
        event = EVENT.search(line)
        if event and event[1] == "RUN" and event[2] in waiting:
            running = event[2]
            return waiting[running].limit
        if not event or event[2] != running:
            return None
        test, running = waiting.pop(running), None
        if event[1] == "FAILED":
            failed.append(test)
        return STOP if failed and not is_matrix else patient(LEAST_LIMIT)

    while waiting and hangs < MOST_HANGS and (is_matrix or not failed):
        before = len(waiting)
        with tempfile.NamedTemporaryFile("w") as flags:
            flags.write("--gtest_filter=" + ":".join(waiting))
            flags.flush()
            command = [tests[0].command[0], "--gtest_flagfile=" + flags.name]
            code = follow(command, environment, patient(LEAST_LIMIT), hear)
        if running is not None:
            failed.append(waiting.pop(running))
            hangs += code is None
            running = None
        elif len(waiting) == before or (code != 0 and not failed):  # it fails ahead of all tests or behind them
            return tests, []
    return failed, list(waiting.values()) if is_matrix else []


def run_group(tests, environment, is_matrix):
    if tests[0].filter:
        return together(tests, environment, is_matrix)
    return [test for test in tests if follow(test.command, {**test.environment, **environment}, test.limit) != 0], []


def groups_of(tests):
    """What can be run together, the fast ahead of the slow."""
    order = lambda test: (test.seconds > SLOW, not test.filter, test.command[0] if test.filter else test.name)
    return [list(group) for _, group in itertools.groupby(sorted(tests, key=order), order)]


def trace(test, most):
    """Whether a test passes; notes how long it takes and which mutants it reaches."""
    with tempfile.NamedTemporaryFile() as file:
        file.truncate(1 << 16)
        start = time.monotonic()
        environment = {**test.environment, "VELMARA_MUTANT_TRACE": file.name}
        code = follow(test.command, environment, test.limit)
        test.seconds = time.monotonic() - start
        test.reached = pathlib.Path(file.name).read_bytes()[:most]
    return code == 0


def failing(tests, workers):
    """The tests that fail though no mutant is on."""
    results = workers.map(lambda group: run_group(group, {}, True)[0], groups_of(tests))
    return [test for failed in results for test in failed]


def judge(mutant, tests, is_matrix):
    reaching = [test for test in tests if test.reached[mutant.number]]
    start = time.monotonic()
    for group in groups_of(reaching):
        failed, unknown = run_group(group, {"VELMARA_MUTANT": str(mutant.number)}, is_matrix)
        mutant.killers += [test.name for test in failed]
        mutant.unknown += [test.name for test in unknown]
        if failed and not is_matrix:
            break
    mutant.state = "killed" if mutant.killers else "survived" if reaching else "unreached"
    say("%4d %-9s by %4d of %4d tests, %5.1f s: %s" % (
        mutant.number, mutant.state, len(mutant.killers), len(reaching), time.monotonic() - start, mutant))  # fmt: skip
