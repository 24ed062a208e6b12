"""The build with all mutants, in a copy of the tree."""

import collections
import dataclasses
import hashlib
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys

import sites

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build" / "mutants"
TREE, BUILD = WORK / "source", WORK / "build"
TARGETS = ["velmara", "velmara_tests", "velmara_memory_tests", "velmara_guide", "fuzz/all"]
SPARE = 1.1  # times as many are drawn, for some do not compile or have no code

SWITCH = b"target_sources(TraceKit PRIVATE ../tests/mutants/switch.cpp)\n"
SUBJECT = re.compile(r"(base|frequencystore(/csv|/kernel(/\w+)?)?)/[^/]+\.(h|cpp)$")
FAULT = re.compile(r" error: | warning: (?:.noreturn. function does|control reaches end|no return statement)")
NAMED = re.compile(r"\bint id = (\d+)")
PLACE = re.compile(r"(?:In file included from |\s+from )?([^:\s]+):(\d+)")


@dataclasses.dataclass
class Mutant:
    number: int
    file: str
    line: int
    lines: range  # all that are rewritten
    kind: str
    text: str
    site: sites.Site
    state: str = "unreached"
    killers: list = dataclasses.field(default_factory=list)
    unknown: list = dataclasses.field(default_factory=list)  # whether these tests are killers too

    def __str__(self):
        return "%s:%d: %s: %s" % (self.file, self.line, self.kind, self.text)


def say(*words):
    print(*words, file=sys.stderr, flush=True)


def make_mutants(count):
    """So many mutants, less if the sources don't offer them, all of them in the build."""
    sources = copy_tree()
    drawn = draw(sources, int(count * SPARE))
    compiled = build(sources, drawn)
    emitted = emitted_numbers()
    mutants = [mutant for mutant in compiled if mutant.number in emitted][:count]
    say("of %d mutants %d do not compile and %d are in no code that runs; %d are tried" % (
        len(drawn), len(drawn) - len(compiled), len(compiled) - len(emitted), len(mutants)))  # fmt: skip
    return mutants


def copy_tree():
    """Copies all that git knows but what is to be mutated; gives the text of that by its name."""
    listed = subprocess.check_output(["git", "ls-files", "-z"], cwd=ROOT, text=True).split("\0")
    names = {name for name in listed if (ROOT / name).is_file()}
    for path in [path for path in TREE.rglob("*") if path.is_file() and str(path.relative_to(TREE)) not in names]:
        path.unlink()
    subjects = {name for name in names if SUBJECT.match(name)}
    for name in names - subjects:
        put(name, (ROOT / name).read_bytes() + (SWITCH if name == "base/CMakeLists.txt" else b""))
        shutil.copymode(ROOT / name, TREE / name)
    return {name: (ROOT / name).read_text() for name in sorted(subjects)}


def put(name, content):
    """Writes a file unless it is as it should be, so that it need not be compiled again."""
    path = TREE / name
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.is_file() or path.read_bytes() != content:
        path.write_bytes(content)


def draw(sources, count):
    """Draws lines from all that offer mutants, and of each line one of its kinds, and one of the places for that."""
    offers = collections.defaultdict(lambda: collections.defaultdict(list))
    line_at = lambda name, position: sources[name].count("\n", 0, position) + 1
    for name, text in sources.items():
        for site in sites.sites_of(text):
            offers[name, line_at(name, site.position)][site.kind].append(site)
    chance = random.Random(1)
    mutants = []
    for number, (name, line) in enumerate(chance.sample(sorted(offers), min(count, len(offers)))):
        kind = chance.choice(sorted(offers[name, line]))
        site = chance.choice(offers[name, line][kind])
        first, last = (line_at(name, position) for position in site.span)
        text = sources[name].split("\n")[line - 1].rstrip(" \\").strip()
        mutants.append(Mutant(number, name, line, range(first, last + 1), kind, text, site))
    return mutants


def build(sources, drawn):
    """Builds what compiles of the mutants, and gives them. What does not is kept for the next build of the same."""
    state = hashlib.sha256(repr((sorted(sources.items()), [str(mutant) for mutant in drawn])).encode()).hexdigest()
    memory = WORK / "refused.json"
    known = json.loads(memory.read_text()) if memory.is_file() else {}
    refused = set(known.get(state, []))
    if state not in known:  # what was built before would not tell its faults again
        shutil.rmtree(BUILD, ignore_errors=True)
    while True:
        mutants = [mutant for mutant in drawn if mutant.number not in refused]
        say("building %d mutants" % len(mutants))
        for name, text in sources.items():
            put(name, sites.mutated(text, {m.number: m.site for m in mutants if m.file == name}).encode())
        configure()
        result = subprocess.run(["ninja", "-C", BUILD, "-k", "0", *TARGETS], text=True, stdout=subprocess.PIPE)
        (WORK / "build.log").write_text(result.stdout)
        blamed = blame(result.stdout, mutants)
        if not blamed and result.returncode:
            sys.exit("the mutants do not build, see %s" % (WORK / "build.log"))
        refused |= blamed
        if not blamed:
            memory.write_text(json.dumps({state: sorted(refused)}))
            return mutants


def configure():
    flags = "-O1 -DNDEBUG " + os.environ.get("CXXFLAGS", "")
    options = ["-DCMAKE_BUILD_TYPE=Mutants", "-DCMAKE_CXX_FLAGS=" + flags, "-DVELMARA_INSTALL=OFF"]
    subprocess.run(["cmake", "-G", "Ninja", "-S", TREE, "-B", BUILD, *options], check=True, stdout=subprocess.DEVNULL)


def blame(output, mutants):
    """The numbers of the mutants that a compiler finds fault with: named by it, or on a line that it tells of."""
    places = collections.defaultdict(set)
    for mutant in mutants:
        for line in mutant.lines:
            places[mutant.file, line].add(mutant.number)
    lines = output.split("\n")
    faults = [i for i, line in enumerate(lines) if FAULT.search(line)]
    blamed, files = set(), set()
    for start, end in zip(faults, [*faults[1:], len(lines)]):
        for line in lines[start:end]:
            named, place = NAMED.search(line), PLACE.match(line)
            path = os.path.relpath(BUILD / place[1], TREE) if place else None
            guilty = {int(named[1])} if named else places[path, int(place[2])] if place else set()
            blamed |= guilty
            files.add(path)
            if guilty:
                break
    # A compiler may tell of the place alone that needs a constant, which by its change is one no more.
    return blamed or {m.number for m in mutants if m.file in files and "constexpr" in m.text}


def emitted_numbers():
    """The numbers of the mutants of which there is code: not of those in what the compiler alone calls, or nobody."""
    files = [path for path in BUILD.rglob("*") if path.is_file() and path.read_bytes()[:4] == b"\x7fELF"]
    names = subprocess.run(["nm", *files], text=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    return {int(number) for number in re.findall(r"_ZN7mutants2onILi(\d+)EEEbv", names)}
