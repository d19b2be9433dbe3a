"""Runs of the check, and the results files that they write."""
from __future__ import annotations

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import threading

from ._zent import Error


class CheckError(Error):
    """A run that failed. `results` has what it found until then, or is None."""

    def __init__(self, text, results=None):
        super().__init__(text)
        self.results = results


class Statistics:
    """How far off an output is: `output`, `type`, `unit`, `count`, `mean`, `rms`, `greatest`, `at`, `over`, ..."""

    def __init__(self, line):
        self.__dict__.update({key: _plain(value) if key in ("mean", "rms", "greatest") else value
                              for key, value in line.items()})

    def __repr__(self):
        return f"<zent.Statistics of {self.output}: greatest {self.greatest}>"


class Record:
    """What became of one record. `line` has all that the results file tells of it."""

    def __init__(self, line):
        self.line = line
        self.index = line["index"]
        self.node = line.get("node", "")
        self.method = line.get("method", "")
        self.outcome = line["outcome"]
        self.seconds = _plain(line.get("seconds"))
        self.error = line.get("error")
        self.warning = line.get("warning", False)
        self.nearest = line.get("nearest")
        self.statistics = [Statistics(each) for each in line.get("statistics", [])]
        self.maya = line.get("maya")
        self.zent = line.get("zent")
        self.inputs = line.get("inputs")
        self.closure = line.get("closure")

    @property
    def matches(self):
        return self.outcome == "match"

    def __repr__(self):
        return f"<zent.Record {self.index}: {self.node}({self.method}): {self.outcome}>"


class Results:
    """The records of a results file, read one by one as they are asked for: an iterator that can be passed once.
    `records` reads all that are left into a list. `summary` is None until the end, and at the end of a run that was cut
    off."""

    def __init__(self, path):
        self._file = open(path, "rb")
        self._read_header(path)

    def _read_header(self, path):
        line = self._file.readline()
        if not line.endswith(b"\n"):
            raise Error(f"{path}: no results file: its first line has no end" if line else f"{path}: the file is empty")
        try:
            self.header = json.loads(line)
        except ValueError:
            self.header = None
        if not isinstance(self.header, dict) or self.header.get("format") != "zent-results":
            raise Error(f"{path}: no results file: its first line is no header")
        if self.header.get("version") != 1:
            raise Error(f"{path}: a results file of version {json.dumps(self.header.get('version'))}; "
                        "this program reads version 1")
        self.summary = None
        self.malformed = 0
        self._records = None

    def __iter__(self):
        return iter(self._records) if self._records is not None else self

    def __next__(self):
        for line in self._file:
            try:
                if not line.endswith(b"\n"):
                    break
                line = json.loads(line)
                if "summary" in line:
                    self.summary = line["summary"]
                    continue
                return Record(line)
            except (ValueError, KeyError, TypeError, AttributeError):
                self.malformed += 1
        self._file.close()
        raise StopIteration

    @property
    def records(self):
        if self._records is None:
            self._records = list(self)
        return self._records

    @property
    def is_complete(self):
        """Whether the run came to its end; once all records are read."""
        return self.summary is not None

    @property
    def matched(self):
        """Whether every record that ran matched, in a run that came to its end."""
        return all(each.outcome in ("match", "ignored", "skipped") for each in self.records) and self.is_complete


def read_results(path):
    """The Results of a file that `zent.check`, zentcheck or Maya's ZentReport wrote. Raises Error for other files."""
    return Results(path)


def _plain(value):
    """Numbers that are none stand as words."""
    return float(value) if value in ("NaN", "Infinity", "-Infinity") else value


def _program(program):
    here = pathlib.Path(__file__).parent.absolute()
    given = program or os.environ.get("ZENTCHECK")
    above = [parent / "bin/zentcheck" for parent in list(here.parents)[1:4]]
    for path in [given] if given else [*above, shutil.which("zentcheck")]:
        if path and os.path.isfile(path):
            return os.fspath(path)
    raise CheckError(f"there is no program {given}" if given else
                     "zentcheck was not found: put it in the path, or name it by the variable ZENTCHECK")


def _as_files(manifest, resource, folder):
    """Files of what is none yet. The resource file of a Manifest is that of its Resource, unless another one is told."""
    if resource is None:
        resource = getattr(manifest, "resource", None)
    if not isinstance(manifest, (str, os.PathLike)):
        text = manifest.text() if hasattr(manifest, "text") else json.dumps(manifest)
        manifest = os.path.join(folder, "manifest.json")
        with open(manifest, "w", encoding="utf-8") as file:
            file.write(text)
    if hasattr(resource, "write"):
        given, resource = resource, os.path.join(folder, "resource.bin")
        given.write(resource)
    return manifest, resource


class RunningCheck(Results):
    """The Results of a run under way: an iterator that gives each record as soon as the run has written it, and waits for
    it until then. Nothing of them is held, unless `records` is asked for. At its end it raises CheckError where the run
    failed; `close`, or the end of a `with`, ends the run before that."""

    def __init__(self, command, kept, folder, timeout):
        self._folder, self._timeout = folder, timeout
        self._is_over = self._has_error = self._is_late = False
        self._timer = None
        self._said = tempfile.TemporaryFile()
        copy = open(kept, "wb") if kept is not None else None
        reading, writing = os.pipe()
        self._file = _Copying(open(reading, "rb"), copy)
        try:
            command = [f"/dev/fd/{writing}" if each is _PIPE else each for each in command]
            self._process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=self._said, pass_fds=(writing,))
        except BaseException:
            self._file.close()
            raise
        finally:
            os.close(writing)  # so that reading comes to its end with the run
        if timeout is not None:
            self._timer = threading.Timer(timeout, self._expire)
            self._timer.daemon = True
            self._timer.start()
        try:
            self._read_header("results")
        except Error:
            self._end(None)
            raise CheckError("the run wrote no results") from None
        except BaseException:
            self.close()
            raise

    def _expire(self):
        self._is_late = True
        self._process.kill()

    def __next__(self):
        if self._is_over:
            raise StopIteration
        try:
            record = super().__next__()
        except StopIteration:
            self._end(self)
            raise
        self._has_error = self._has_error or record.outcome == "error"
        return record

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def __del__(self):
        if hasattr(self, "_process"):
            self.close()

    def close(self):
        """Ends the run, if it is still under way."""
        if not self._is_over:
            self._process.kill()
            self._finish()

    def _finish(self):
        self._is_over = True
        self._file.close()
        status = self._process.wait()
        if self._timer:
            self._timer.cancel()
        with self._said as file:
            file.seek(0)
            said = file.read().decode(errors="replace")
        self._folder.cleanup()
        return status, said

    def _end(self, found):
        status, said = self._finish()
        if self._is_late:
            raise subprocess.TimeoutExpired("zentcheck", self._timeout)
        _require_success(status, said, self._has_error, found)


_PIPE = object()


class _Copying:
    """Lines of a file, which go into another one, too."""

    def __init__(self, file, copy):
        self._file, self._copy = file, copy

    def readline(self):
        line = self._file.readline()
        if self._copy and line:
            self._copy.write(line)
        return line

    def __iter__(self):
        return iter(self.readline, b"")

    def close(self):
        self._file.close()
        if self._copy:
            self._copy.close()


def _require_success(status, said, has_error, found):
    """Status 2 is also that of a run with records that could not be evaluated, which are told one by one."""
    if status < 0:
        raise CheckError(f"zentcheck was ended by signal {-status}", found)
    if found is None or (status == 2 and not has_error):
        lines = [line[len("error: "):] for line in said.splitlines() if line.startswith("error: ")]
        raise CheckError("\n".join(lines) or "the run failed", found)
    if status not in (0, 1, 2):
        raise CheckError(f"zentcheck ended with status {status}", found)


def check(manifest, resource=None, scene=None, epsilon=None, *, relative=None, warn=None, skip=(), namespace=None,
          ignore_deformer=False, stop_on_first_error=False, results=None, program=None, timeout=None,
          scene_resource=None, stream=False):
    """Holds the records of a manifest against the node functions, and returns the Results.

    `manifest` is a file, a Manifest or a list of records, `resource` its file of large values or a Resource, `scene` the
    scene that its plugs are read from, and `scene_resource` the resource file of its geometry where that is another one.
    `results` names the file that the run writes, and keeps it. `timeout` is in seconds; a run that takes longer is ended,
    with subprocess.TimeoutExpired.

    Waits for the end of the run; with `stream` it returns a RunningCheck at once, an iterator that gives each record
    while the run goes on, and holds none.

    Runs the program zentcheck, so that no run can harm this process: `program`, the variable ZENTCHECK, or the one that
    was built or installed with this package. Raises CheckError where the run fails, with what zentcheck said.
    """
    folder = tempfile.TemporaryDirectory()
    try:
        manifest, resource = _as_files(manifest, resource, folder.name)
        written = _PIPE if stream else os.path.join(folder.name, "results.jsonl") if results is None else os.fspath(results)
        command = [_program(program), "--quiet", "--results", written,
                   "--ignore-deformer", str(ignore_deformer).lower(),
                   "--stop-on-first-error", str(stop_on_first_error).lower()]
        for option, value in (("--epsilon", epsilon), ("--relative", relative), ("--warn", warn), ("--scene", scene),
                              ("--scene-resource", scene_resource), ("--namespace", namespace),
                              ("--skip", ";".join(skip) or None)):
            if value is not None:
                command += [option, os.fspath(value) if isinstance(value, os.PathLike) else str(value)]
        command += ["--", os.fspath(manifest)] + ([os.fspath(resource)] if resource is not None else [])
        if stream:
            running, folder = RunningCheck(command, results, folder, timeout), None
            return running
        with open(os.path.join(folder.name, "out.txt"), "wb") as out:
            run = subprocess.run(command, stdout=out, stderr=subprocess.PIPE, timeout=timeout, check=False)
        try:
            found = Results(written)
        except (OSError, Error):
            found = None
        has_error = run.returncode == 2 and found is not None and any(record.outcome == "error" for record in found)
        _require_success(run.returncode, run.stderr.decode(errors="replace"), has_error, found)
        return found if run.returncode != 2 else Results(written)
    finally:
        if folder is not None:
            folder.cleanup()
