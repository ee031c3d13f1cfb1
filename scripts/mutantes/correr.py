#!/usr/bin/python3
"""./test --mutantes [FOLDER or FILE...]: changes the rules one at a time and tells what no test notices.

The changes of a run are built once, into a copy of the tree (build-mutantes/arbol). Each test is run once to
learn which changes it reaches; then each change is switched on and the tests that reach it run, those that
noticed a neighbour first, then the folder's own, the fastest first, until one fails or ENOUGH seconds of the
processor are spent. Tests on PostgreSQL stay out: the rules are the
same on both engines. Survivors and the table go into docs/tests.md, changes that cannot alter anything are
listed with the reason in equivalentes.txt.

--again believes the last run of these folders in what it noticed and tries the others and what is new; --own
asks the folders' own tests only, which is quickly built;
--each N every Nth change, an estimate; --list prints the changes.
"""
import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import threading
import time

from cambios import File, compiling

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
TREE = ROOT / "build-mutantes/arbol"
BUILD = TREE / "build"
RESULTS = ROOT / "build-mutantes/resultados.json"
FOLDERS = ["text", "voucher", "assistants", "yearend", "interchange", "empresa"]
PROGRAMS = ["text", "voucher", "assistants", "yearend", "interchange", "empresa", "libros", "report", "screen",
            "host", "driver"]
LEFT_OUT = "*ostgres*:*Servidor*"
BATCHES = (0.3, 2.0)  # seconds of tests tried together before the next, larger lot
ENOUGH = 8  # seconds of tests after which a change counts as unnoticed, though slower ones might notice
MEMORY = pathlib.Path("/dev/shm")


def run(*command, **options):
    return subprocess.run([str(c) for c in command], check=True, **options)


def copy_tree():
    """The tracked files as they stand; what did not change keeps its time, so that little is built again."""
    TREE.mkdir(parents=True, exist_ok=True)
    names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, check=True, text=True,
                           stdout=subprocess.PIPE).stdout.split("\n")
    wanted = {n for n in names if n and (ROOT / n).is_file()}
    for old in TREE.rglob("*"):
        name = str(old.relative_to(TREE))
        if old.is_file() and not name.startswith("build/") and name not in wanted:
            old.unlink()
    return wanted


def write_if_new(path, data):
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.is_file() or path.read_bytes() != data:
        path.write_bytes(data)


def sources(what):
    for w in what:
        path = ROOT / w if w.startswith("src/") else ROOT / "src" / w
        yield from sorted(path.glob("*.cpp")) if path.is_dir() else [path]


class Run:
    def __init__(self, what):
        self.files, self.names = {}, {}
        number = 0
        for path in sources(what):
            file = File(ROOT, path.relative_to(ROOT))
            for change in file.changes:
                number += 1
                change.number = number
            self.files[str(file.path)] = file
        self.count = number + 1
        self.folders = sorted({p.split("/")[1] for p in self.files})

    def name(self, file, change):
        """What a change is called in the lists: no line number, so that it stays its name. The second of a
        name in a file has a 2 behind it."""
        if not self.names.get(file.path):
            seen = self.names[file.path] = {}
            counts = collections.Counter()
            for c in sorted(file.every, key=lambda c: (c.start, c.number)):
                plain = self.plain_name(file, c)
                counts[plain] += 1
                seen[c.number] = plain if counts[plain] == 1 else f"{plain} ({counts[plain]})"
        return self.names[file.path][change.number]

    def plain_name(self, file, change):
        def short(text):
            return re.sub(r"\s+", " ", text).strip()[:110]
        old = short(file.text(change.start, change.end))
        return f"{file.path} {change.where}: {old} => {'(gone)' if change.text is None else short(change.text)}"

    def build(self):
        wanted = copy_tree()
        with concurrent.futures.ProcessPoolExecutor(2) as pool:
            for (path, file), (text, kept) in zip(self.files.items(), pool.map(accepted, self.files.values())):
                file.changes = [c for c in file.changes if c.number in kept]
                write_if_new(TREE / path, text.encode())
        for name in wanted - set(self.files):
            write_if_new(TREE / name, (ROOT / name).read_bytes())
            shutil.copymode(ROOT / name, TREE / name)
        run("cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
            f"-DCMAKE_PROJECT_quorvel_INCLUDE={TREE}/scripts/mutantes/mutantes.cmake",
            f"-DQUORVEL_MUTANTES={TREE}/scripts/mutantes",
            f"-DQUORVEL_MUTANTES_CARPETAS={';'.join(self.folders)}",
            f"-DQUORVEL_MUTANTES_PROGRAMAS={';'.join(PROGRAMS)}", stdout=subprocess.DEVNULL)
        while self.refused():
            for path, file in self.files.items():
                write_if_new(TREE / path, file.written()[0].encode())

    def refused(self):
        """Builds. What the compiler of the build refuses is dropped, and True says that there was some."""
        built = subprocess.run(["ninja", "-k", "0", "-C", str(BUILD), *(p + "_test" for p in PROGRAMS)], text=True,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if built.returncode == 0:
            return False
        dropped = set()
        for path, line, column in re.findall(r"(src/\w+/\w+\.cpp):(\d+):(\d+): error", built.stdout):
            file = self.files.get(path)
            if file is None:
                continue
            text, ranges = file.written()
            at = sum(len(l) + 1 for l in text.encode().split(b"\n")[:int(line) - 1]) + int(column) - 1
            around = [r for r in ranges if r[0] <= at < r[1]]
            gone = set(min(around, key=lambda r: r[1] - r[0])[2]) if around else set()
            file.changes = [c for c in file.changes if c.number not in gone]
            dropped |= gone
        if not dropped:
            raise SystemExit(built.stdout[-6000:])
        return True

    def reached(self):
        """For each change the tests that ask for it, as (program, test), and each test's seconds."""
        reach, seconds = collections.defaultdict(set), {}
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            for program, notes in zip(PROGRAMS, pool.map(self.listen, PROGRAMS)):
                early = set()
                for line in notes:
                    test, ms, outcome, *numbers = line.split()
                    if test == "main":
                        early = set(map(int, numbers))
                        continue
                    if outcome != "bien":
                        print(f"  fails unchanged, left out: {program} {test}")
                        continue
                    seconds[program, test] = int(ms) / 1000
                    for n in map(int, numbers):
                        reach[n].add((program, test))
                self.share(early, reach, program)
        return reach, seconds

    def share(self, early, reach, program):
        """A table filled before the first test is seen by every test that reaches its file."""
        for file in self.files.values():
            mine = {c.number for c in file.changes}
            tests = {t for n in mine for t in reach[n] if t[0] == program}
            for n in mine & early:
                reach[n] |= tests

    def listen(self, program):
        with Workplace() as place:
            seen = place.path / "vistos"
            seen.write_bytes(bytes(self.count))
            subprocess.run([BUILD / "bin" / f"{program}_test", f"--gtest_filter=-{LEFT_OUT}"], cwd=place.path,
                           env=place.env | {"QUORVEL_MUTANTES_VISTOS": str(seen)}, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
            notes = pathlib.Path(f"{seen}.pruebas")
            return notes.read_text().splitlines() if notes.exists() else []


def limit(seconds):
    """What never ends or takes all memory ends by itself, however busy the machine is."""
    resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
    resource.setrlimit(resource.RLIMIT_AS, (2 << 30, 2 << 30))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def accepted(file):
    text = compiling(file)
    return text, {c.number for c in file.changes}


class Workplace:
    """A folder in memory for one run of a test program; what a killed test leaves goes with it."""

    def __enter__(self):
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="quorvel-mutante-", dir=MEMORY if MEMORY.is_dir() else None))
        self.path.chmod(0o755)
        runtime = self.path / "run"
        runtime.mkdir(mode=0o700)
        self.env = os.environ | {"TMPDIR": str(self.path), "XDG_RUNTIME_DIR": str(runtime), "HOME": str(self.path),
                                 "GTEST_FAIL_FAST": "1", "QT_QPA_PLATFORM": "offscreen"}
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.path, ignore_errors=True)


class Trial:
    """Switches changes on and looks for a test that fails."""

    def __init__(self, reach, seconds):
        self.reach, self.seconds = reach, seconds
        self.noticed_by = collections.Counter()
        self.lock = threading.Lock()

    def lots(self, path, number):
        with self.lock:
            own = path.split("/")[1]
            tests = sorted(self.reach[number],
                           key=lambda t: (-self.noticed_by[path, t], t[0] != own, self.seconds[t]))
        limits, lot, total, spent = list(BATCHES), [], 0.0, 0.0
        for t in tests:
            spent += self.seconds[t]
            if spent > ENOUGH:
                break
            lot.append(t)
            total += self.seconds[t] + 0.02
            if limits and total > limits[0]:
                yield lot
                limits.pop(0)
                lot, total = [], 0.0
        if lot:
            yield lot

    def notice(self, path, number):
        """The test that noticed, or None."""
        for lot in self.lots(path, number):
            by_program = collections.defaultdict(list)
            for program, test in lot:
                by_program[program].append(test)
            for program, tests in by_program.items():
                found = self.fails(program, tests, number)
                if found:
                    with self.lock:
                        self.noticed_by[path, (program, found)] += 1
                    return f"{program} {found}"
        return None

    def fails(self, program, tests, number):
        patience = int(2 + 4 * sum(self.seconds[program, t] for t in tests))
        with Workplace() as place:
            process = subprocess.Popen([BUILD / "bin" / f"{program}_test", "--gtest_filter=" + ":".join(tests)],
                                       cwd=place.path, env=place.env | {"QUORVEL_MUTANTE": str(number)}, text=True,
                                       stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL,
                                       start_new_session=True, errors="replace",
                                       preexec_fn=lambda: limit(patience))
            try:
                output, _ = process.communicate(timeout=60 + 20 * patience)
            except subprocess.TimeoutExpired:
                output = None
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()
        if output is None:
            return tests[0]  # never ends
        if process.returncode == 0:
            return None
        started = re.findall(r"\[ RUN      \] (\S+)", output)
        failed = re.findall(r"\[  FAILED  \] (\S+?),? ", output)
        return (failed or started[-1:] or tests)[0]


def try_all(run_, again, each):
    reach, seconds = run_.reached()
    trial, outcome = Trial(reach, seconds), {}
    pairs = [(f, c) for f in run_.files.values() for c in f.changes][::each]
    for f, c in pairs:
        if (before := again.get(run_.name(f, c))) is not None:
            outcome[c.number] = tuple(before)
    pairs = [(f, c) for f, c in pairs if c.number not in outcome]
    print(f"{len(pairs)} changes, {len(seconds)} tests of {sum(seconds.values()):.0f} s", flush=True)
    begin, done = time.time(), 0
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        waiting = {pool.submit(trial.notice, str(f.path), c.number): (f, c) for f, c in pairs}
        for future in concurrent.futures.as_completed(waiting):
            file, change = waiting[future]
            outcome[change.number] = (str(file.path), run_.name(file, change), future.result(),
                                      bool(reach[change.number]))
            done += 1
            if done % 100 == 0:
                print(f"  {done} of {len(pairs)}, {time.time() - begin:.0f} s", flush=True)
                keep(list(outcome.values()))
    return [outcome[n] for n in sorted(outcome)]


def equivalents():
    lines = (HERE / "equivalentes.txt").read_text().splitlines()
    return {l.split(" | ")[0].strip(): l.split(" | ")[1] for l in lines if " | " in l and not l.startswith("#")}


def kept():
    return json.loads(RESULTS.read_text()) if RESULTS.exists() else {}


def keep(outcome):
    """The results of all runs by file; a file that was run now replaces what was there."""
    old = kept()
    for path in {o[0] for o in outcome}:
        old[path] = [o for o in outcome if o[0] == path]
    RESULTS.write_text(json.dumps(old, indent=0, ensure_ascii=False))
    return old


def table(results):
    same = equivalents()
    rows, survivors = [], []
    for folder in FOLDERS:
        mine = [o for path, all_ in results.items() if path.startswith(f"src/{folder}/") for o in all_]
        if not mine:
            continue
        noticed = sum(o[2] is not None for o in mine)
        equal = sum(o[2] is None and o[1] in same for o in mine)
        left = [o for o in mine if o[2] is None and o[1] not in same]
        share = 100 * noticed / max(1, len(mine) - equal)
        rows.append(f"| {folder} | {len(mine)} | {noticed} | {equal} | {len(left)} | {share:.1f} % |")
        survivors += [f"- `{o[1]}`" + ("" if o[3] else " (no test reaches it)") for o in left]
    head = ["| folder | changes | noticed | cannot matter | survivors | noticed of those that can matter |",
            "| --- | --- | --- | --- | --- | --- |"]
    return head + rows, survivors


def write_down(rows, survivors):
    page = ROOT / "docs/tests.md"
    if not page.exists():
        return
    text = page.read_text()
    for mark, lines in (("table", rows), ("survivors", survivors)):
        text = re.sub(rf"(<!-- mutants: {mark} -->\n).*?(<!-- end -->)",
                      lambda m: m[1] + "\n".join(lines) + "\n" + m[2], text, flags=re.S)
    page.write_text(text)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("what", nargs="*", default=FOLDERS)
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--own", action="store_true")
    parser.add_argument("--each", type=int, default=1)
    parser.add_argument("--list", action="store_true")
    options = parser.parse_args()
    os.chdir(ROOT)
    run_ = Run(options.what)
    if options.own:
        PROGRAMS[:] = run_.folders
    if options.list:
        for file in run_.files.values():
            print("\n".join(f"{c.number} {run_.name(file, c)}" for c in file.changes))
        return
    again = {o[1]: o for all_ in kept().values() for o in all_ if o[2] is not None} if options.again else {}
    print(f"Building {sum(len(f.changes) for f in run_.files.values())} changes", flush=True)
    run_.build()
    results = keep(try_all(run_, again, options.each))
    rows, survivors = table(results)
    write_down(rows, survivors)
    print("\n".join(rows + survivors))


if __name__ == "__main__":
    main()
